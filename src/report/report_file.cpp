#include "report/report_file.h"

namespace varnolix {

AppendingReport::AppendingReport(const ReportFile& report) : report_(report) {
    openOutput(report_.stream, report_.location, std::ios_base::out | std::ios_base::app);
}

AppendingReport::~AppendingReport() {
    closeOutput(report_.stream, report_.location);
}

void startReport(const ReportFile& report, const std::string& text) {
    openOutput(report.stream, report.location, std::ios_base::out | std::ios_base::trunc);
    report.stream << text;
    closeOutput(report.stream, report.location);
}

void appendToReport(const ReportFile& report, const std::string& text) {
    AppendingReport open(report);
    open.stream() << text;
}

}  // namespace varnolix
