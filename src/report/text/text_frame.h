#pragma once

#include "report/report_file.h"

// The frame that all text reports share: a header with the banner, input parameters and file table, and a footer with
// the time stamp and the run time.

namespace varnolix {

/// Printed in place of the matches across files if there is only one motif file.
inline constexpr const char* singleFileNote = "There is no global matching for 1 motif file.";

/// The lines of a header. The cutoff is printed in the notation of the stream.
std::string textHeader(const std::ios_base& stream);

/// The lines of a footer, with the current time. The run time is printed in the notation of the stream.
std::string textFooter(const std::ios_base& stream);

/// Empties the report's file and writes the header.
void writeTextHeader(const ReportFile& report);

/// Appends the footer.
void writeTextFooter(const ReportFile& report);

}  // namespace varnolix
