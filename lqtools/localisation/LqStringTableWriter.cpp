#include "lqtools/localisation/LqStringTableWriter.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unordered_map>

#include "lqtools/localisation/detail/TableFileIo.h"
#include "lqtools/security/LqCRC16.h"
#include "lqtools/text/Unicode.h"

namespace {

constexpr uint32_t kLastReachable = 0x7FFFFFFFu;  // the reader's last reachable position

void PutBig16(std::string& out, std::size_t at, uint32_t value) {
  out[at] = static_cast<char>(value >> 8 & 0xFF);
  out[at + 1] = static_cast<char>(value & 0xFF);
}

void PutBig32(std::string& out, std::size_t at, uint32_t value) {
  PutBig16(out, at, value >> 16);
  PutBig16(out, at + 2, value & 0xFFFF);
}

bool WriteAll(int handle, const std::string& bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t n = ::write(handle, bytes.data() + done, bytes.size() - done);
    if (n > 0) {
      done += static_cast<std::size_t>(n);
    } else if (n == 0 || errno != EINTR) {
      return false;
    }
  }
  return true;
}

}  // namespace

LqStringTableWriter::Result LqStringTableWriter::Add(unsigned int id, const char* text,
                                                     int length) {
  if (id > 0xFFFF) return IdOutOfRange;
  if (!text) text = "";
  const std::size_t size = length < 0 ? std::strlen(text) : static_cast<std::size_t>(length);
  if (size >= 0xFFFF) return TextTooLong;
  if (std::memchr(text, 0, size)) return TextHasZeroByte;
  const auto key = static_cast<uint16_t>(id);
  if (m_texts.size() >= 0xFFFF && m_texts.find(key) == m_texts.end()) return TooManyEntries;
  m_texts[key].assign(text, size);
  return Ok;
}

LqStringTableWriter::Result LqStringTableWriter::Add(unsigned int id, const LqString& text) {
  return Add(id, static_cast<const char*>(text), text.Length());
}

LqStringTableWriter::Result LqStringTableWriter::Add(unsigned int id, const LqWString& text) {
  LqString utf8;
  Utf16ToUtf8(utf8, text);
  return Add(id, utf8);
}

LqStringTableWriter::Result LqStringTableWriter::AddUntranslated(unsigned int id) {
  return Add(id, " ", 1);
}

bool LqStringTableWriter::Remove(unsigned int id) {
  return id <= 0xFFFF && m_texts.erase(static_cast<uint16_t>(id)) != 0;
}

LqStringTableWriter::Result LqStringTableWriter::Build(std::string& bytes) const {
  bytes.clear();
  const std::size_t count = m_texts.size();
  const std::size_t head = 4 + 8 * count;
  std::string image(head, '\0');
  PutBig16(image, 0, static_cast<uint32_t>(count));

  // Equal texts share one place in the text area.
  std::unordered_map<std::string, uint32_t> placed;
  std::size_t at = 2;
  for (const auto& [id, text] : m_texts) {
    auto where = placed.find(text);
    if (where == placed.end()) {
      if (image.size() > kLastReachable) return FileTooLarge;
      where = placed.emplace(text, static_cast<uint32_t>(image.size())).first;
      image += text;
    }
    PutBig16(image, at, id);
    PutBig32(image, at + 2, where->second);
    PutBig16(image, at + 6, static_cast<uint32_t>(text.size()));
    at += 8;
  }
  LqCRC16 crc;
  crc.Add(image.data(), static_cast<int>(head - 2));
  image[head - 2] = static_cast<char>(crc.Value() >> 8);
  image[head - 1] = static_cast<char>(crc.Value() & 0xFF);
  bytes.swap(image);
  return Ok;
}

LqStringTableWriter::Result LqStringTableWriter::Save(const char* path) const {
  if (!path || !*path) return CannotWrite;
  std::string bytes;
  const Result built = Build(bytes);
  if (built != Ok) return built;

  static std::atomic<unsigned> serial{0};
  const std::string target = lq::detail::TablePath(path);
  std::string temporary;
  int handle = -1;
  for (int attempt = 0; attempt < 16 && handle == -1; ++attempt) {
    temporary = target + ".tmp" + std::to_string(::getpid()) + "." + std::to_string(serial++);
    handle = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (handle == -1 && errno != EEXIST) return CannotWrite;
  }
  if (handle == -1) return CannotWrite;
  const bool written = WriteAll(handle, bytes);
  const bool closed = ::close(handle) == 0;
  if (!written || !closed || std::rename(temporary.c_str(), target.c_str()) != 0) {
    ::unlink(temporary.c_str());
    return CannotWrite;
  }
  return Ok;
}

const char* LqStringTableWriter::ResultText(Result result) {
  switch (result) {
    case Ok: return "written";
    case IdOutOfRange: return "id above 65535";
    case TextTooLong: return "text of 65535 bytes or more";
    case TextHasZeroByte: return "text with a zero byte";
    case TooManyEntries: return "more than 65535 entries";
    case FileTooLarge: return "text area beyond 2 GiB";
    case CannotWrite: return "file cannot be written";
  }
  return "unknown result";
}
