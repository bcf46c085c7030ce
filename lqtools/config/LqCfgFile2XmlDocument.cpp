#include "lqtools/config/LqCfgFile2XmlDocument.h"

#include "lqtools/config/LqCfgFile.h"

namespace {

using XmlNode = XmlDocument::XmlNode;

// Options first, then groups, each in file order. The recursion is as deep as the tree, which the
// reader keeps within LqCfgFile::kMaxDepth.
void CopyGroup(const LqCfgFile::LqGroup& group, XmlNode& node, XmlDocument& document) {
  for (auto option = group.OptionsBegin(); option != group.OptionsEnd(); ++option) {
    auto* element = new XmlNode(&document, (*option)->Name(), -1);
    element->SetValue((*option)->Value());
    node.AddChild(element, nullptr);
  }
  for (auto child = group.GroupsBegin(); child != group.GroupsEnd(); ++child) {
    auto* element = new XmlNode(&document, (*child)->Name(), -1);
    CopyGroup(**child, *element, document);
    node.AddChild(element, nullptr);
  }
}

}  // namespace

bool LqCfgFile2XmlDocument(const char16_t* cfgFileName, const char16_t* xmlFileName,
                           XmlDocument& document) {
  LqCfgFile file;
  if (!file.Load(LqWString(cfgFileName ? cfgFileName : u""))) return false;
  document.Create(u"main");
  CopyGroup(*file.Root(), *document.Root(), document);
  document.SetFileName(xmlFileName);
  return true;
}
