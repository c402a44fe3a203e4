#pragma once

#include "report/report_file.h"

// The frame of the text reports: banner, input parameters and file table in front, time stamp and run time behind.
// All text reports share it.

namespace varnolix {

/// Stands where one motif file leaves nothing to match across files.
inline constexpr const char* singleFileNote = "There is no global matching for 1 motif file.";

/// The lines of a header; the cutoff is printed in the notation of the stream.
std::string textHeader(const std::ios_base& stream);

/// The lines of a footer at this moment; the run time is printed in the notation of the stream.
std::string textFooter(const std::ios_base& stream);

/// Empties the report's file and writes the header.
void writeTextHeader(const ReportFile& report);

/// Appends the footer.
void writeTextFooter(const ReportFile& report);

}  // namespace varnolix
