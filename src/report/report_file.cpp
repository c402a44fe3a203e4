#include "report/report_file.h"

namespace varnolix {

AppendingReport::AppendingReport(const ReportFile& report) : report_(report), opened_(!report.stream.is_open()) {
    if (opened_) openOutput(report_.stream, report_.location, std::ios_base::out | std::ios_base::app);
}

AppendingReport::~AppendingReport() {
    if (opened_) closeOutput(report_.stream, report_.location);
}

void startReport(const ReportFile& report, const std::string& text) {
    openOutput(report.stream, report.location, std::ios_base::out | std::ios_base::trunc);
    report.stream << text;
    closeOutput(report.stream, report.location);
}

}  // namespace varnolix
