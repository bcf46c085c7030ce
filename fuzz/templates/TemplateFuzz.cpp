// Renders any input as a text template, with a small string table loaded (whose texts hold
// conversions of every kind) and the separators set. Rendering must end, whatever the input.
#include <lqtools/localisation/LqLocaleInformation.h>
#include <lqtools/localisation/LqStringTableFile.h>
#include <lqtools/localisation/LqStringTableWriter.h>
#include <lqtools/localisation/TextTemplates.h>

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  static const std::string path = "/tmp/lqtools-template-fuzz-" + std::to_string(getpid());
  LqStringTableWriter writer;
  writer.Add(1, "Power");
  writer.Add(2, "%s is %d kW");
  writer.Add(3, "%*d %n %p %hs %lld %Lf %c %%");
  writer.Add(4, "%");
  writer.AddUntranslated(5);
  if (writer.Save(path.c_str()) != LqStringTableWriter::Ok) std::abort();
  if (!SetLqLoadStringTableFile(path.c_str(), nullptr)) std::abort();
  unlink(path.c_str());  // the table keeps its open file
  localeInformationWide.SetThousandSeparator(u".");
  localeInformationWide.SetDecimalSeparator(u",");
  localeInformation.SetThousandSeparator(".");
  localeInformation.SetDecimalSeparator(",");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  LqWString result;
  ParseXMLText(text.c_str(), result);
  ParseXMLText(LqString(text.c_str()), result);
  return 0;
}
