#pragma once

#include <ostream>
#include <string>

#include "run/shared_records.h"
#include "run/system/output_file.h"

// The reports, and how their writers open them. A header truncates the file; every later writer opens it for appending
// and closes it again, so a report is never open twice. The streams are never reset between writers: once a matrix has
// set fixed notation, later numbers and the run time keep it.

namespace varnolix {

/// A report: its stream and the full path of its file.
struct ReportFile {
    std::ofstream& stream;
    const std::string& location;
};

namespace reports {

inline const ReportFile full{myfile, outputFileLocation};
inline const ReportFile brief{myfileWithoutMotif, outputFileWithoutMotifLocation};
inline const ReportFile global{myGlobalMatchingFile, outputFileGlobalMatchingLocation};
inline const ReportFile fullPage{myHTMLFile, outputHTMLFileLocation};
inline const ReportFile globalPage{myHTMLGlobalMatchingFile, outputHTMLGlobalMatchingFileLocation};
inline const ReportFile database{myDatabaseMatchingFile, outputDatabaseMatchingFileLocation};
inline const ReportFile databaseBrief{myDatabaseMatchingFileWithoutMotif,
                                      outputDatabaseMatchingFileWithoutMotifLocation};
inline const ReportFile databaseGlobal{myDatabaseMatchingGlobalMatchingFile,
                                       outputDatabaseMatchingGlobalMatchingFileLocation};
inline const ReportFile databasePage{myDatabaseMatchingHTMLFile, outputDatabaseMatchingHTMLFileLocation};
inline const ReportFile databaseGlobalPage{myDatabaseMatchingGlobalMatchingHTMLFile,
                                           outputDatabaseMatchingGlobalMatchingHTMLFileLocation};
inline const ReportFile combinedGlobal{myCombinedMatrixGlobalFile, outputCombinedMatrixGlobalFileLocation};
inline const ReportFile combinedGlobalAndLocal{myCombinedMatrixGlobalAndLocalFile,
                                               outputCombinedMatrixGlobalAndLocalFileLocation};
inline const ReportFile combinedBestMatches{myCombinedMatrixBestMatchesFile,
                                            outputCombinedMatrixBestMatchesFileLocation};
inline const ReportFile tree{myPhylogeneticTreeFile, outputPhylogeneticTreeHTMLFileLocation};
inline const ReportFile treeGlobal{myPhylogeneticTreeGlobalMatchingFile, outputPhylogeneticTreeGlobalHTMLFileLocation};

}  // namespace reports

/// Empties the report's file and writes the text into it.
void startReport(const ReportFile& report, const std::string& text);

/// Opens the report, appends the text and closes it again.
void appendToReport(const ReportFile& report, const std::string& text);

/// Keeps a closed report open for appending while this object lives.
/// Ends the run if the report cannot be opened, or if not everything could be written.
class AppendingReport {
  public:
    explicit AppendingReport(const ReportFile& report);
    ~AppendingReport();
    AppendingReport(const AppendingReport&) = delete;
    AppendingReport& operator=(const AppendingReport&) = delete;

    std::ostream& stream() { return report_.stream; }

  private:
    const ReportFile& report_;
};

}  // namespace varnolix
