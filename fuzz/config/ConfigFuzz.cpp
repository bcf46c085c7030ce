// Loads any bytes behind the header as a configuration file, looks up a spread of group paths
// (plain, filtered, nested, malformed) and converts the file to XML.
#include <lqtools/config/LqCfgFile.h>
#include <lqtools/config/LqCfgFile2XmlDocument.h>
#include <lqtools/text/StdRuntimeException.h>
#include <lqtools/text/Unicode.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <string>

namespace {

LqWString g_path;
std::string g_file;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  char folder[] = "/tmp/lqtools-cfg-fuzz-XXXXXX";
  if (!mkdtemp(folder)) abort();
  g_file = std::string(folder) + "/fuzz.cfg";
  Utf8ToUtf16(g_path, LqString(g_file.c_str()));
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FILE* file = std::fopen(g_file.c_str(), "wb");
  if (!file) return 0;
  std::fputs("ASCII\r\n", file);
  std::fwrite(data, 1, size, file);
  std::fclose(file);

  LqCfgFile cfg;
  cfg.Load(g_path);
  const char16_t* paths[] = {u"a",       u"a/b",         u"a:k='v'",   u"a:k='v'/b",
                             u"g/g/g/g", u"x:id='1'/y",  u"a:k='v'x",  u"a:k=",
                             u"a:k='",   u"",            u"a/",        u"/a"};
  for (const char16_t* path : paths) (void)cfg.Group(LqWString(path));
  // Every group name found by walking the tree is looked up as a path too.
  for (auto group = cfg.Root()->GroupsBegin(); group != cfg.Root()->GroupsEnd(); ++group) {
    try {
      (void)cfg.Group((*group)->Name());
    } catch (const StdRuntimeException&) {
      // Only a path ending in ':' may throw, and names never hold ':'.
      abort();
    }
  }
  LqCfgFile copy(cfg);
  XmlDocument document;
  LqCfgFile2XmlDocument(g_path, u"fuzz.xml", document);
  LqString text;
  document.CreateXmlCode(text, false);
  return 0;
}
