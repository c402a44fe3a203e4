#pragma once

// What the answers of the dialogue ask for.

namespace varnolix {

/// Text reports: format "Text" or "All".
bool writesText();
/// Pages: format "HTML" or "All", and "PDF", as PDF files are made of them.
bool writesPages();
/// PDF files: format "PDF" or "All".
bool writesPDF();

/// Matches within files too, and not only across files: type "All".
bool isTypeAll();

/// The tree of all motifs.
bool isLocalTreeDrawn();
/// The tree across files.
bool isGlobalTreeDrawn();

}  // namespace varnolix
