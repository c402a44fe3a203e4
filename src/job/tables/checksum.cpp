#include "job/tables/checksum.h"

#include <openssl/evp.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <vector>

namespace varnolix::job {

namespace {

class Sha256 {
  public:
    Sha256() : context_(EVP_MD_CTX_new(), EVP_MD_CTX_free) { EVP_DigestInit_ex(context_.get(), EVP_sha256(), nullptr); }

    void add(std::string_view bytes) { EVP_DigestUpdate(context_.get(), bytes.data(), bytes.size()); }

    /// The sum as it is, 32 bytes.
    std::vector<unsigned char> bytes() {
        std::vector<unsigned char> digest(EVP_MAX_MD_SIZE);
        unsigned length = 0;
        EVP_DigestFinal_ex(context_.get(), digest.data(), &length);
        digest.resize(length);
        return digest;
    }

    std::string digits() {
        std::string text;
        for (const unsigned char byte : bytes()) {
            constexpr std::string_view hexadecimal = "0123456789abcdef";
            text += hexadecimal[byte >> 4U];
            text += hexadecimal[byte & 15U];
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

std::string sha256AsBase64(std::string_view bytes) {
    Sha256 sum;
    sum.add(bytes);
    const std::vector<unsigned char> digest = sum.bytes();
    // Four letters for every three bytes, and a zero byte behind them.
    std::vector<unsigned char> letters((digest.size() + 2) / 3 * 4 + 1);
    const int length = EVP_EncodeBlock(letters.data(), digest.data(), static_cast<int>(digest.size()));
    return {letters.begin(), letters.begin() + length};
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
