#include "job/tables/checksum.h"

#include <openssl/evp.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <memory>

namespace varnolix::job {

namespace {

class Sha256 {
  public:
    Sha256() : context_(EVP_MD_CTX_new(), EVP_MD_CTX_free) { EVP_DigestInit_ex(context_.get(), EVP_sha256(), nullptr); }

    void add(std::string_view bytes) { EVP_DigestUpdate(context_.get(), bytes.data(), bytes.size()); }

    std::string digits() {
        std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
        unsigned length = 0;
        EVP_DigestFinal_ex(context_.get(), digest.data(), &length);
        std::string text;
        for (unsigned place = 0; place < length; ++place) {
            constexpr std::string_view hexadecimal = "0123456789abcdef";
            text += hexadecimal[digest[place] >> 4U];
            text += hexadecimal[digest[place] & 15U];
        }
        return text;
    }

  private:
    std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context_;
};

}  // namespace

std::string sha256(std::string_view bytes) {
    Sha256 sum;
    sum.add(bytes);
    return sum.digits();
}

std::string sha256OfFile(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return "";
    std::ifstream file(path, std::ios::binary);
    Sha256 sum;
    std::string part(std::size_t{1} << 16U, '\0');
    while (file.read(part.data(), static_cast<std::streamsize>(part.size())) || file.gcount() > 0) {
        sum.add(std::string_view(part).substr(0, static_cast<std::size_t>(file.gcount())));
    }
    return file.eof() ? sum.digits() : "";
}

}  // namespace varnolix::job
