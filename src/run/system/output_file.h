#pragma once

#include <fstream>
#include <optional>
#include <string>
#include <string_view>

// Opens, closes and checks every file that the program writes: reports, pages, tables, scripts, the listing, matrix
// files. If anything does not reach its file, the run ends; only a listing that cannot be opened is skipped with a
// message.

namespace varnolix {

/// A file that could not be written, and why.
struct OutputTrouble {
    std::string path;
    std::string reason;
};

/// Reports on standard error that the file was not written.
void sayNotWritten(const std::string& path, const char* reason);

/// Opens the stream on a regular file, which is created if necessary. Refuses a symbolic link in the last part of the
/// path, as someone else may have put it there, and anything that is not a regular file. Does not block on pipes.
/// Returns whether the stream is open; if not, `errno` says why.
bool tryOpenOutput(std::ofstream& stream, const std::string& path, std::ios_base::openmode mode = std::ios_base::out);

/// The same, but ends the run with the message about an invalid output path if the file cannot be opened.
void openOutput(std::ofstream& stream, const std::string& path, std::ios_base::openmode mode = std::ios_base::out);

/// Closes the stream, and ends the run with the same message unless everything written to it has reached the file.
/// This has to be checked on closing, because opening the stream again clears its error state.
void closeOutput(std::ofstream& stream, const std::string& path);

/// Writes the text as the whole content of the file. For threads: ending the run is left to the main thread.
/// @return trouble if not everything has reached the file
std::optional<OutputTrouble> writeOutput(const std::string& path, std::string_view text);

/// Trouble if the path is a symbolic link. For files that outside tools are about to write, and for folders.
std::optional<OutputTrouble> linkTrouble(const std::string& path);

/// Ends the run with the same message if there is trouble.
void endOnTrouble(const std::optional<OutputTrouble>& trouble);

/// Ends the run if the path is a symbolic link.
void refuseLink(const std::string& path);

/// Ends the run unless everything printed so far has reached standard output, which may be a file or a pipe.
void checkConsole();

/// From now on, a write beyond the file size limit fails like any other write, instead of killing the process.
void letFileSizeLimitFailWrites();

}  // namespace varnolix
