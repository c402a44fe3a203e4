#pragma once

// Questions about the answers of the dialogue.

namespace varnolix {

/// Whether text reports are written: format "Text" or "All".
bool writesText();
/// Whether pages are written: format "HTML" or "All", but also "PDF", as PDF files are made from pages.
bool writesPages();
/// Whether PDF files are written: format "PDF" or "All".
bool writesPDF();

/// Whether matches within files are reported as well as those across files: type "All".
bool isTypeAll();

/// Whether the tree of all motifs is drawn.
bool isLocalTreeDrawn();
/// Whether the tree across files is drawn.
bool isGlobalTreeDrawn();

}  // namespace varnolix
