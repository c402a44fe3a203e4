#pragma once

#include <string>
#include <string_view>

namespace varnolix::job {

/// SHA-256 as 64 hexadecimal digits, as `sha256sum` prints it.
std::string sha256(std::string_view bytes);

/// The same 32 bytes in base64, as content security policies name a text.
std::string sha256AsBase64(std::string_view bytes);

/// The 64 digits of a file's bytes; empty if it is no regular file that can be read, as standard input is none.
std::string sha256OfFile(const std::string& path);

}  // namespace varnolix::job
