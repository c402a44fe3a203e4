#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

// What the parts of the client need of files, folders and the environment.

namespace varnolix::logos {

/// An open descriptor that closes itself; a negative number stands for none.
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

/// Everything up to the end of the input; nothing at an error, a time-out of a socket among them.
std::optional<std::string> readAll(int descriptor);

/// Writes the content whole; false at an error.
bool writeAll(int descriptor, std::string_view content);

/// Whether the path is a real folder, not a link, that belongs to this user and that nobody else may enter.
bool isPrivateFolder(const std::string& path);

/// Whether both are the same file.
bool isSameFile(const struct stat& one, const struct stat& other);

/// A variable of the environment, or the other text where it is unset or empty.
std::string setting(const char* name, const std::string& otherwise = "");

/// A variable of the environment that holds a whole number, or the other number where it holds anything else.
std::uint64_t numberSetting(const char* name, std::uint64_t otherwise);

/// FNV-1a of 64 bits: any one changed byte changes it. For names and against damage, not against forgers.
std::uint64_t contentHash(std::string_view content);

/// Sixteen hexadecimal digits.
std::string hexadecimal(std::uint64_t value);

}  // namespace varnolix::logos
