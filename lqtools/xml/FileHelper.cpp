// FileHelper: whole files and XML elements as strings.
#include "lqtools/xml/FileHelper.h"

#include <fstream>
#include <sstream>

#include "lqtools/xml/XmlDocument.h"

FileHelperInterface::FileHelperInterface() = default;
FileHelperInterface::FileHelperInterface(const FileHelperInterface&) = default;
FileHelperInterface::FileHelperInterface(FileHelperInterface&&) = default;
FileHelperInterface& FileHelperInterface::operator=(const FileHelperInterface&) = default;
FileHelperInterface& FileHelperInterface::operator=(FileHelperInterface&&) = default;

FileHelper::FileHelper() = default;
FileHelper::FileHelper(const FileHelper&) = default;
FileHelper& FileHelper::operator=(const FileHelper&) = default;
FileHelper::~FileHelper() = default;

std::string FileHelper::FileToString(const LqWString& fileName) {
  // Low-byte narrowing, not UTF-8: a name beyond Latin-1 names another file, or none.
  const LqString narrow(fileName);
  const char* name = narrow;
  return FileToString(std::string(name ? name : ""));
}

std::string FileHelper::FileToString(const std::string& fileName) {
  std::ifstream in(fileName);
  if (!in) return std::string();
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

std::string FileHelper::XmlDocumentFileNodeToString(const LqWString& fileName,
                                                    const LqWString& nodeName) {
  XmlDocument document;
  if (!document.Load(static_cast<const char16_t*>(fileName))) return std::string();
  XmlDocument::XmlNode* root = document.Root();
  XmlDocument::XmlNode* node =
      root->Tag() == nodeName ? root : root->Node(static_cast<const char16_t*>(nodeName));
  if (!node) return std::string();
  LqString code;
  node->CreateXmlCode(code);
  const char* text = code;
  return std::string(text ? text : "");
}
