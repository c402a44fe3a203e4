#pragma once

#include <optional>
#include <vector>

#include "run/shared_records.h"
#include "run/system/output_file.h"

// The stages that write the reports, in the order of the run. Each has a source file of its own name in stages/.

namespace varnolix {

// Logos.

/// Draws the logos of all input motifs.
void writeMotif();
/// Draws the two logos of one input motif.
std::optional<OutputTrouble> writeMotifImage(const Matrix& matrix, long id);
/// Draws the logos of all motifs of the collection.
void writeDatabaseMotif();
/// Draws the two logos of one motif of the collection; otherwise like writeMotifImage.
std::optional<OutputTrouble> writeDatabaseMotifImage(const Matrix& matrix, long id);

// Headers. Each empties its report.

/// Begins the text report of the matches across files.
void writeHeaderGlobalText();
/// Begins the text report of the top motifs in the collection.
void writeHeaderGlobalTextDatabaseMatch();
/// Begins the page of the matches across files.
void writeHeaderGlobalHTMLOrPDF();
/// Begins the page of the top motifs in the collection.
void writeHeaderGlobalHTMLOrPDFDatabaseMatch();
/// Begins the full text report.
void writeHeaderText();
/// Begins the text report without matrices.
void writeHeaderTextWithoutMotif();
/// Begins the full page.
void writeHeaderHTMLOrPDF();
/// Begins the text report of the matches in the collection.
void writeHeaderTextDatabaseMatch();
/// Begins the text report of the matches in the collection, without matrices.
void writeHeaderTextWithoutMotifDatabaseMatch();
/// Begins the page of the matches in the collection.
void writeHeaderHTMLOrPDFDatabaseMatch();

// Result sections. Each appends the best matches of the motif with this id to its report.

/// To the full text report.
void WriteTopResultsList(const std::vector<dataCombinedScore>& list, int mode, long id);
/// To the text report without matrices.
void WriteTopResultsListWithoutMotif(const std::vector<dataCombinedScore>& list, int mode, long id);
/// To the text report of the matches across files.
void WriteTopResultsGlobalMatchingList(const std::vector<dataCombinedScore>& list, long id);
/// To the full page.
void WriteTopResultsListHTML(const std::vector<dataCombinedScore>& list, int mode, long id);
/// To the page of the matches across files.
void WriteTopResultsGlobalMatchingListHTML(const std::vector<dataCombinedScore>& list, long id);
/// To the text report of the matches in the collection.
void WriteDatabaseTopResultsList(const std::vector<dataCombinedScore>& list, int mode, long id);
/// To the text report of the matches in the collection, without matrices.
void WriteDatabaseTopResultsListWithoutMotif(const std::vector<dataCombinedScore>& list, int mode, long id);
/// To the page of the matches in the collection.
void WriteDatabaseTopResultsListHTML(const std::vector<dataCombinedScore>& list, int mode, long id);
/// To the text report of the top motifs in the collection.
void WriteDatabaseTopResultsGlobalList(const std::vector<dataCombinedScore>& list, int mode, long id);
/// To the page of the top motifs in the collection.
void WriteDatabaseTopResultsGlobalListHTML(const std::vector<dataCombinedScore>& list, int mode, long id);

// Footers. Each completes its report with the run time.

/// Ends the text report of the matches across files.
void writeFooterGlobalText();
/// Ends the text report of the top motifs in the collection.
void writeFooterGlobalTextDatabaseMatch();
/// Ends the page of the matches across files.
void writeFooterGlobalHTMLOrPDF();
/// Ends the page of the top motifs in the collection.
void writeFooterGlobalHTMLOrPDFDatabaseMatch();
/// Ends the full text report.
void writeFooterText();
/// Ends the text report without matrices.
void writeFooterTextWithoutMotif();
/// Ends the full page.
void writeFooterHTMLOrPDF();
/// Ends the text report of the matches in the collection.
void writeFooterTextDatabaseMatch();
/// Ends the text report of the matches in the collection, without matrices.
void writeFooterTextWithoutMotifDatabaseMatch();
/// Ends the page of the matches in the collection.
void writeFooterHTMLOrPDFDatabaseMatch();

// PDF conversion.

/// Asks for the conversion of the page of the matches across files.
void convertHTMLToPDFGlobal();
/// Asks for that of the top motifs in the collection.
void convertHTMLToPDFGlobalDatabaseMatch();
/// Asks for that of the full page.
void convertHTMLToPDF();
/// Asks for that of the matches in the collection.
void convertHTMLToPDFDatabaseMatch();

}  // namespace varnolix
