#pragma once

#include <ostream>

#include "run/shared_records.h"

// The reports, and the one way to open them. A header truncates the file, all later writers append. The streams are
// never reset between writers: once a matrix has set fixed notation, later numbers and the run time keep it.

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

/// Opens the stream on the path; ends the process with the message of an invalid output path where that fails.
void openOutput(std::ofstream& stream, const std::string& path, std::ios_base::openmode mode = std::ios_base::out);

/// Holds a report open for appending. Where it is open already, the one that opened it closes it.
class AppendingReport {
  public:
    explicit AppendingReport(const ReportFile& report);
    ~AppendingReport();
    AppendingReport(const AppendingReport&) = delete;
    AppendingReport& operator=(const AppendingReport&) = delete;

    std::ostream& stream() { return stream_; }

  private:
    std::ofstream& stream_;
    bool opened_;
};

}  // namespace varnolix
