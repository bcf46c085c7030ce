// bcrypt at cost 10 beside the C library's crypt_r for "$2b$" (libxcrypt), Base64 of 1 MB beside
// OpenSSL's EVP_EncodeBlock and EVP_DecodeBlock, and the CRC-16 of 1 MB. The Base64 and CRC figures
// are bytes of binary data per second; bcrypt reports the time of one hash.
#include <benchmark/benchmark.h>
#include <crypt.h>
#include <lqtools/security/Base64.h>
#include <lqtools/security/BcryptLib.h>
#include <lqtools/security/LqCRC16.h>
#include <openssl/evp.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int kBlockSize = 1 << 20;
const char kPassword[] = "correct horse battery staple";
const char kSetting[] = "$2b$10$abcdefghijklmnopqrstuu";

const std::vector<unsigned char>& Block() {
  static const std::vector<unsigned char> block = [] {
    std::vector<unsigned char> data(kBlockSize);
    uint32_t x = 2463534242u;
    for (auto& byte : data) {
      x ^= x << 13;
      x ^= x >> 17;
      x ^= x << 5;
      byte = static_cast<unsigned char>(x);
    }
    return data;
  }();
  return block;
}

const std::string& BlockText() {
  static const std::string text = [] {
    LqString out;
    EncodeBase64(out, Block().data(), kBlockSize);
    return std::string(out, out.Length());
  }();
  return text;
}

// The hash of kPassword under kSetting by libxcrypt, against which both sides are checked.
const std::string& ReferenceHash() {
  static const std::string hash = [] {
    crypt_data data{};
    const char* result = crypt_r(kPassword, kSetting, &data);
    return std::string(result ? result : "");
  }();
  return hash;
}

void SetBlockBytes(benchmark::State& state) {
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kBlockSize);
}

void LqBcryptCost10(benchmark::State& state) {
  if (!BcryptLib::ValidatePassword(kPassword, ReferenceHash())) {
    state.SkipWithError("lqtools and libxcrypt disagree");
    return;
  }
  for (auto _ : state)
    benchmark::DoNotOptimize(BcryptLib::ValidatePassword(kPassword, ReferenceHash()));
}

void CryptRCost10(benchmark::State& state) {
  auto data = std::make_unique<crypt_data>();
  for (auto _ : state)
    benchmark::DoNotOptimize(crypt_r(kPassword, ReferenceHash().c_str(), data.get()));
}

void LqBase64Encode(benchmark::State& state) {
  LqString out;
  for (auto _ : state) {
    EncodeBase64(out, Block().data(), kBlockSize);
    benchmark::DoNotOptimize(static_cast<const char*>(out));
  }
  SetBlockBytes(state);
}

void OpenSslEncodeBlock(benchmark::State& state) {
  std::vector<unsigned char> out(BlockText().size() + 1);
  for (auto _ : state)
    benchmark::DoNotOptimize(EVP_EncodeBlock(out.data(), Block().data(), kBlockSize));
  SetBlockBytes(state);
}

void LqBase64Decode(benchmark::State& state) {
  std::vector<unsigned char> out(kBlockSize + 3);
  for (auto _ : state)
    benchmark::DoNotOptimize(DecodeBase64(out.data(), BlockText().c_str()));
  SetBlockBytes(state);
}

void OpenSslDecodeBlock(benchmark::State& state) {
  std::vector<unsigned char> out(kBlockSize + 3);
  const auto* text = reinterpret_cast<const unsigned char*>(BlockText().data());
  const int length = static_cast<int>(BlockText().size());
  for (auto _ : state)
    benchmark::DoNotOptimize(EVP_DecodeBlock(out.data(), text, length));
  SetBlockBytes(state);
}

void LqCrc16(benchmark::State& state) {
  for (auto _ : state) {
    LqCRC16 crc;
    crc.Add(Block().data(), kBlockSize);
    benchmark::DoNotOptimize(crc.Value());
  }
  SetBlockBytes(state);
}

// The yardstick: the published two-table loop, one byte at a time.
void ByteAtATimeCrc16(benchmark::State& state) {
  for (auto _ : state) {
    int crc = 0xFFFF;
    for (unsigned char byte : Block()) {
      const int index = (crc >> 8) ^ byte;
      crc = ((LqCRC16::crcHiTable[index] ^ (crc & 0xFF)) << 8) | LqCRC16::crcLoTable[index];
    }
    benchmark::DoNotOptimize(crc);
  }
  SetBlockBytes(state);
}

}  // namespace

BENCHMARK(LqBcryptCost10)->Unit(benchmark::kMillisecond);
BENCHMARK(CryptRCost10)->Unit(benchmark::kMillisecond);
BENCHMARK(LqBase64Encode)->Unit(benchmark::kMicrosecond);
BENCHMARK(OpenSslEncodeBlock)->Unit(benchmark::kMicrosecond);
BENCHMARK(LqBase64Decode)->Unit(benchmark::kMicrosecond);
BENCHMARK(OpenSslDecodeBlock)->Unit(benchmark::kMicrosecond);
BENCHMARK(LqCrc16)->Unit(benchmark::kMicrosecond);
BENCHMARK(ByteAtATimeCrc16)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
