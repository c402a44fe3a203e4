#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

// Helpers for files, folders and the environment, which all parts of the client use.

namespace varnolix::logos {

/// Owns an open descriptor and closes it. A negative number stands for none.
class Descriptor {
  public:
    explicit Descriptor(int number = -1) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    bool isOpen() const { return number_ >= 0; }
    int number() const { return number_; }
    void close();

  private:
    int number_;
};

/// Reads everything up to the end of the input. Nothing after an error, such as the time-out of a socket.
std::optional<std::string> readAll(int descriptor);

/// Writes the whole content. Returns false after an error.
bool writeAll(int descriptor, std::string_view content);

/// Whether the path is a real folder, not a link, which belongs to this user and which nobody else may enter.
bool isPrivateFolder(const std::string& path);

/// Whether both describe the same file.
bool isSameFile(const struct stat& one, const struct stat& other);

/// An environment variable, or the other text if it is unset or empty.
std::string setting(const char* name, const std::string& otherwise = "");

/// An environment variable that contains a whole number, or the other number if it contains anything else.
std::uint64_t numberSetting(const char* name, std::uint64_t otherwise);

/// The 64-bit FNV-1a hash. Changing any single byte changes it. Used for names and to detect damage, not forgery.
std::uint64_t contentHash(std::string_view content);

/// Sixteen hexadecimal digits.
std::string hexadecimal(std::uint64_t value);

}  // namespace varnolix::logos
