#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "job/downloads/download.h"

// The bytes of motif files: from a file, a folder of files, or standard input, unpacked where they are packed.

namespace varnolix::job {

/// More than this is not unpacked: a small file can be made that becomes endless.
inline constexpr std::uint64_t mostUnpackedBytes = std::uint64_t{4} << 30U;

/// Either a text or why there is none, as a clause in plain words.
struct TextOrReason {
    std::string text;
    std::string reason;  ///< empty if there is a text
};

/// The text, unpacked if it is gzip, which its first two bytes tell.
/// @param mostBytes more than that is refused
TextOrReason unpacked(std::string text, std::uint64_t mostBytes = mostUnpackedBytes);

/// One file of motifs.
struct MotifFile {
    std::string path;  ///< as named by the user; in a folder, the folder's name and the file's; "-" for standard input
    std::string baseName;  ///< without folders and extensions; "stdin" for standard input
    std::string text;
};

/// Either files or why there are none.
struct MotifFiles {
    std::vector<MotifFile> files;
    std::string path;    ///< the file that could not be read
    std::string reason;  ///< empty if all could be read
};

/// The line that tells the user of a motif that was not taken.
std::string refusalLine(const std::string& path, const RefusedMotif& refused);

/// Reads a file, standard input ("-"), or all regular files in a folder in the order of their names, hidden ones and
/// folders in it left out.
MotifFiles readMotifFiles(const std::string& path);

/// The file's name without folders and without extensions such as ".jaspar", ".txt" and ".gz".
std::string baseNameOf(const std::string& path);

}  // namespace varnolix::job
