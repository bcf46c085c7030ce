// LoadNodeByPath on any file and any path, through buffers from 2 to 4096 bytes.
//
// Input: the path up to the first line feed (at most 64 bytes, each byte one unit), then the
// file's bytes. The file is read with several buffer sizes. A buffer of 2 bytes never meets the
// end of the file in the middle of a read, so its result is the reference: every other size gives
// the same tree, or nothing when the root's start tag ends in a read that also met the end of the
// file. Files with zero bytes are read but not compared: what stands behind a zero byte within a
// block is dropped, and which bytes share a block depends on the buffer size.
//
// Build with the log files in the build folder (the default of a fuzzing build): every input
// removes them at the end.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include <lqtools/files/LqLog.h>
#include <lqtools/xml/XmlDocument.h>

using XmlNode = XmlDocument::XmlNode;

namespace {

std::string Describe(const XmlNode* node) {
  if (!node) return "null";
  LqString code;
  node->CreateXmlCode(code);
  const char* text = code;
  return text ? text : "";
}

const std::string& FilePath() {
  static const std::string path =
      "/tmp/lqtools-selective-fuzz-" + std::to_string(static_cast<long>(getpid())) + ".xml";
  return path;
}

std::u16string Wide(const std::string& bytes) {
  std::u16string out;
  for (const char c : bytes)
    out.push_back(static_cast<unsigned char>(c));
  return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const char* bytes = reinterpret_cast<const char*>(data);
  const void* lineFeed = std::memchr(bytes, '\n', size < 64 ? size : 64);
  const size_t pathLength = lineFeed ? static_cast<const char*>(lineFeed) - bytes : 0;
  const size_t fileStart = lineFeed ? pathLength + 1 : 0;
  const std::u16string path = lineFeed ? Wide(std::string(bytes, pathLength)) : u"/a";

  FILE* file = std::fopen(FilePath().c_str(), "wb");
  if (!file) std::abort();
  std::fwrite(bytes + fileStart, 1, size - fileStart, file);
  std::fclose(file);

  const std::u16string fileName = Wide(FilePath());
  const bool comparable = std::memchr(bytes + fileStart, 0, size - fileStart) == nullptr;
  const unsigned long long chosen =
      2 + (size >= 2 ? (data[size - 1] | data[size - 2] << 8) % 4095 : 0);

  std::unique_ptr<XmlNode> reference(XmlDocument::LoadNodeByPath(fileName, path, 2));
  const std::string expected = Describe(reference.get());
  for (const unsigned long long bufferSize : {3ull, 7ull, 64ull, 4096ull, chosen}) {
    std::unique_ptr<XmlNode> node(XmlDocument::LoadNodeByPath(fileName, path, bufferSize));
    if (!comparable || !node) continue;
    const std::string got = Describe(node.get());
    if (got != expected) {
      std::fprintf(stderr, "buffer %llu gives %s\nbuffer 2 gives %s\n", bufferSize, got.c_str(),
                   expected.c_str());
      std::abort();
    }
  }
  // Failed loads write a line each; a fuzzing build keeps its logs in its own folder, and they
  // are emptied here so that a long run does not fill the disk.
  unlink(LqLogFileName());
  unlink(LqExceptionLogFileName());
  return 0;
}
