// A host reading one setting by path and showing it: the value at PATH of an XML settings file is
// a text template, rendered with an optional string table.
//   read-setting SETTINGS.xml PATH [TABLE]
#include <cstdio>

#include <lqtools/LqTools.h>

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: read-setting SETTINGS.xml PATH [TABLE]\n");
    return 2;
  }
  LqWString file, path;
  Utf8ToUtf16(file, LqString(argv[1]));
  Utf8ToUtf16(path, LqString(argv[2]));
  if (argc > 3) SetLqLoadStringTableFile(argv[3], nullptr);
  SetupLocalize();

  XmlDocument settings;
  if (!settings.Load(file)) {
    std::fprintf(stderr, "read-setting: %s does not load\n", argv[1]);
    return 1;
  }
  const LqWString value = settings.Root()->Value(path, u"");
  LqString setting, shown;
  Utf16ToUtf8(setting, value);
  LqWString text;
  ParseXMLText(setting, text);
  Utf16ToUtf8(shown, text);
  std::printf("setting: %s\nshown:   %s\n", static_cast<const char*>(setting),
              static_cast<const char*>(shown));
  return 0;
}
