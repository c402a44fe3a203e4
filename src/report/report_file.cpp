#include "report/report_file.h"

#include "run/run_text.h"

namespace varnolix {

void openOutput(std::ofstream& stream, const std::string& path, std::ios_base::openmode mode) {
    stream.open(path, mode);
    if (!stream.is_open()) endRun(invalidOutputPathMessage);
}

AppendingReport::AppendingReport(const ReportFile& report) : stream_(report.stream), opened_(!stream_.is_open()) {
    if (opened_) openOutput(stream_, report.location, std::ios_base::out | std::ios_base::app);
}

AppendingReport::~AppendingReport() {
    if (opened_) stream_.close();
}

}  // namespace varnolix
