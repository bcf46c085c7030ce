// lqtool strtab build|dump|get, over a readable source form of string tables:
//   # comment                 lines starting with '#', and empty lines, are skipped
//   <id><TAB><text>           the UTF-8 text of id 0 to 65535
//   <id>                      the id is not translated in this table (the blank mark)
// In a text: \\ backslash, \n line feed, \r carriage return, \t tab, \xHH any byte. dump prints
// this form, and build of a dump gives the same file byte for byte.
#include <cstdio>
#include <map>
#include <memory>
#include <set>

#include <lqtools/localisation/LqStringTableFile.h>
#include <lqtools/localisation/LqStringTableWriter.h>
#include <lqtools/security/LqCRC16.h>

#include "Commands.h"
#include "Common.h"
#include "StringTableSource.h"

namespace lqtool {

namespace {

struct StrtabOptions {
  std::string source;
  std::string output;
  std::string file;
  std::string secondary;
  unsigned int id = 0;
};

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

std::string Unescape(const std::string& text, const std::string& where) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      out += text[i];
      continue;
    }
    const char next = i + 1 < text.size() ? text[i + 1] : '\0';
    i += 1;
    switch (next) {
      case '\\': out += '\\'; break;
      case 'n': out += '\n'; break;
      case 'r': out += '\r'; break;
      case 't': out += '\t'; break;
      case 'x': {
        const int high = i + 1 < text.size() ? HexDigit(text[i + 1]) : -1;
        const int low = i + 2 < text.size() ? HexDigit(text[i + 2]) : -1;
        if (high < 0 || low < 0) throw Failure(kUnusable, where, "\\x needs two hexadecimal digits");
        out += static_cast<char>(high * 16 + low);
        i += 2;
        break;
      }
      default: throw Failure(kUnusable, where, "unknown escape \\" + std::string(1, next));
    }
  }
  return out;
}

std::string Escape(const std::string& text) {
  static const char kDigits[] = "0123456789ABCDEF";
  std::string out;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\\') out += "\\\\";
    else if (c == '\n') out += "\\n";
    else if (c == '\r') out += "\\r";
    else if (c == '\t') out += "\\t";
    else if (byte < 0x20 || byte == 0x7F) out += std::string("\\x") + kDigits[byte >> 4] + kDigits[byte & 15];
    else out += c;
  }
  return out;
}

void Build(const StrtabOptions& o) { WriteOutput(o.output, BuildStringTable(ReadInput(o.source), o.source)); }

unsigned ReadBig(const std::string& bytes, std::size_t at, int size) {
  unsigned value = 0;
  for (int i = 0; i < size; ++i) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

void Dump(const StrtabOptions& o) {
  const std::string bytes = ReadInput(o.file);
  const auto fail = [&](const char* why) { return Failure(kAnswerNo, o.file, why); };
  if (bytes.size() < 4) throw fail("too short for a string table");
  const std::size_t count = ReadBig(bytes, 0, 2);
  const std::size_t indexEnd = 2 + 8 * count;
  if (bytes.size() < indexEnd + 2) throw fail("too short for its index");
  LqCRC16 crc;
  crc.Reset();
  crc.Add(bytes.data(), static_cast<int>(indexEnd));
  if (ReadBig(bytes, indexEnd, 2) != static_cast<unsigned>(crc.Value())) throw fail("index checksum is wrong");
  std::string out = "# string table " + o.file + ": " + std::to_string(count) + " texts\n";
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t entry = 2 + 8 * i;
    const unsigned id = ReadBig(bytes, entry, 2);
    const std::size_t position = ReadBig(bytes, entry + 2, 4);
    const std::size_t length = ReadBig(bytes, entry + 6, 2);
    if (position == 0xFFFFFFFFu || length == 0xFFFF || position + length > bytes.size())
      throw fail(("entry of id " + std::to_string(id) + " has no readable text").c_str());
    const std::string text = bytes.substr(position, length);
    out += std::to_string(id);
    if (text != " ") out += "\t" + Escape(text);
    out += "\n";
  }
  WriteOutput("", out);
}

void Get(const StrtabOptions& o) {
  InputPath(o.file);
  if (!o.secondary.empty()) InputPath(o.secondary);
  LqStringTableFile table;
  if (!table.SetFile(o.file.c_str(), o.secondary.empty() ? nullptr : o.secondary.c_str()))
    throw Failure(kAnswerNo, o.file, "not a string table (or an empty one)");
  LqString text;
  if (!table.LoadStringW(text, o.id))
    throw Failure(kAnswerNo, o.file, "no text for id " + std::to_string(o.id));
  std::printf("%s\n", static_cast<const char*>(text));
}

}  // namespace

std::string BuildStringTable(const std::string& source, const std::string& name) {
  Progress progress("strtab build", source.size());
  LqStringTableWriter writer;
  std::set<unsigned long> seen;
  std::size_t lineNumber = 0;
  for (std::size_t start = 0; start < source.size();) {
    std::size_t end = source.find('\n', start);
    if (end == std::string::npos) end = source.size();
    std::string line = source.substr(start, end - start);
    start = end + 1;
    ++lineNumber;
    progress.Update(start);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line[0] == '#') continue;
    const std::string where = name + ":" + std::to_string(lineNumber);
    const std::size_t tab = line.find('\t');
    const std::string number = line.substr(0, tab);
    if (number.empty() || number.size() > 5 || number.find_first_not_of("0123456789") != std::string::npos)
      throw Failure(kUnusable, where, "expected an id of 0 to 65535, then a tab and the text");
    const unsigned long id = std::stoul(number);
    if (!seen.insert(id).second) throw Failure(kUnusable, where, "id " + number + " given twice");
    const LqStringTableWriter::Result result =
        tab == std::string::npos ? writer.AddUntranslated(static_cast<unsigned>(id))
                                 : [&] {
                                     const std::string text = Unescape(line.substr(tab + 1), where);
                                     return writer.Add(static_cast<unsigned>(id), text.data(),
                                                       static_cast<int>(text.size()));
                                   }();
    if (result != LqStringTableWriter::Ok)
      throw Failure(kUnusable, where, LqStringTableWriter::ResultText(result));
  }
  std::string bytes;
  const LqStringTableWriter::Result built = writer.Build(bytes);
  if (built != LqStringTableWriter::Ok)
    throw Failure(kUnusable, name, LqStringTableWriter::ResultText(built));
  return bytes;
}

void AddStrtabCommands(CLI::App& app) {
  auto* strtab = app.add_subcommand("strtab", "string tables: build from source, dump, look up");
  strtab->require_subcommand(1);
  auto o = std::make_shared<StrtabOptions>();

  auto* build = strtab->add_subcommand("build", "write the string table of a source file");
  build->add_option("SOURCE", o->source, "lines of <id><TAB><text>, or - for standard input")->required();
  build->add_option("-o,--output", o->output, "the table file to write")->required();
  build->callback([o] { Build(*o); });

  auto* dump = strtab->add_subcommand("dump", "print a string table in the source form");
  dump->add_option("FILE", o->file, "string table file, or -")->required();
  dump->callback([o] { Dump(*o); });

  auto* get = strtab->add_subcommand("get", "print the text of ID");
  get->add_option("FILE", o->file, "string table file")->required();
  get->add_option("ID", o->id, "text id")->required();
  get->add_option("--secondary", o->secondary, "table that answers what FILE does not translate");
  get->callback([o] { Get(*o); });
}

}  // namespace lqtool
