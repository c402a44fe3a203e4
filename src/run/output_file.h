#pragma once

#include <fstream>
#include <string>

// The one way to open, close and check what the program writes: reports, pages, tables, scripts, listing, matrix files.
// Whatever does not reach its file ends the run.

namespace varnolix {

/// Tells on standard error that the file was not written.
void sayNotWritten(const std::string& path, const char* reason);

/// Opens the stream on the path, a regular file or a new one. A symbolic link in the last part of the path is refused,
/// as someone else may have put it there, and so is anything that is no file; a pipe does not make it wait.
/// Returns whether it is open; if not, `errno` says why.
bool tryOpenOutput(std::ofstream& stream, const std::string& path, std::ios_base::openmode mode = std::ios_base::out);

/// The same; ends the run with the message of an invalid output path where it cannot be opened.
void openOutput(std::ofstream& stream, const std::string& path, std::ios_base::openmode mode = std::ios_base::out);

/// Closes the stream; ends the run with the same message unless all that was written through it has reached the file.
/// The end comes here, at once, since opening the stream again would clear its error.
void closeOutput(std::ofstream& stream, const std::string& path);

/// Ends the run if there is a symbolic link where an outside tool is about to write, or where a folder should be.
void refuseLink(const std::string& path);

/// Ends the run unless all that was printed has reached standard output, which need not be a terminal.
void checkConsole();

/// From here on a file at the limit of its size fails to be written, instead of ending the process by a signal.
void letFileSizeLimitFailWrites();

}  // namespace varnolix
