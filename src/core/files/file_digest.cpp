#include "core/files/file_digest.hpp"

#include <openssl/evp.h>

#include <array>
#include <memory>
#include <stdexcept>
#include <vector>

#include "core/files/files.hpp"

namespace velmora {
namespace {

/// SHA-256 of what is added piece by piece.
class Hash {
 public:
  Hash() : context_(EVP_MD_CTX_new(), EVP_MD_CTX_free) {
    if (context_ == nullptr || EVP_DigestInit_ex(context_.get(), EVP_sha256(), nullptr) != 1) {
      Fail();
    }
  }

  void Add(const void* bytes, std::size_t count) {
    if (EVP_DigestUpdate(context_.get(), bytes, count) != 1) {
      Fail();
    }
  }

  std::string Text() {
    std::array<unsigned char, EVP_MAX_MD_SIZE> sum{};
    unsigned length = 0;
    if (EVP_DigestFinal_ex(context_.get(), sum.data(), &length) != 1) {
      Fail();
    }
    std::string text;
    for (unsigned i = 0; i < length; ++i) {
      constexpr std::string_view kDigits = "0123456789abcdef";
      text += kDigits[sum[i] >> 4U];
      text += kDigits[sum[i] & 15U];
    }
    return text;
  }

 private:
  [[noreturn]] static void Fail() { throw std::runtime_error("SHA-256 is not to be had"); }

  std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context_;
};

}  // namespace

std::string Sha256(std::string_view bytes) {
  Hash hash;
  hash.Add(bytes.data(), bytes.size());
  return hash.Text();
}

FileDigest DigestOf(const std::string& path, const std::function<bool(double part)>& goesOn) {
  const InputFile file(path);
  Hash hash;
  std::vector<char> piece(std::size_t{1} << 18);
  std::int64_t at = 0;
  while (const std::size_t got = file.ReadAt(at, piece.data(), piece.size())) {
    hash.Add(piece.data(), got);
    at += static_cast<std::int64_t>(got);
    if (goesOn && !goesOn(static_cast<double>(at) / static_cast<double>(file.Size()))) {
      break;
    }
  }
  return {path, at, hash.Text()};
}

bool IsUnchanged(const FileDigest& digest) {
  try {
    return DigestOf(digest.path) == digest;
  } catch (const FileError&) {
    return false;
  }
}

}  // namespace velmora
