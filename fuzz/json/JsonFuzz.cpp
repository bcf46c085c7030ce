// Any bytes through the JSON parser, then through both writers: the wide text, converted to
// UTF-8, must equal the bytes that the stream writer gives. A parsed tree is also copied and the
// copy must write the same text.
#include <lqtools/json/JsonDocument.h>
#include <lqtools/text/Unicode.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > (1u << 20)) return 0;
  // Terminated, without slack, so that a read behind the text is caught.
  std::vector<char> text(data, data + size);
  text.push_back(0);
  JsonDocument doc;
  if (!doc.Parse(text.data())) return 0;

  std::u16string wide;
  doc.Root()->CreateJsonCode(wide);
  LqString utf8;
  Utf16ToUtf8(utf8, LqWString(wide.c_str(), false));

  char* streamed = nullptr;
  std::size_t streamedSize = 0;
  FILE* stream = open_memstream(&streamed, &streamedSize);
  if (!stream) return 0;
  doc.Root()->SaveJsonCode(stream);
  std::fclose(stream);
  const bool same = streamedSize == static_cast<std::size_t>(utf8.Length()) &&
                    std::memcmp(streamed, static_cast<const char*>(utf8), streamedSize) == 0;
  std::free(streamed);
  if (!same) std::abort();

  const JsonDocument::JsonNode copy(*doc.Root());
  std::u16string copied;
  copy.CreateJsonCode(copied);
  if (copied != wide) std::abort();
  return 0;
}
