#include <gtest/gtest.h>
#include <lqtools/config/LqCfgFile.h>
#include <lqtools/config/LqCfgFile2XmlDocument.h>

#include <string>

#include "CfgTestSupport.h"

namespace {

std::string XmlText(const XmlDocument& document) {
  LqString text;
  document.CreateXmlCode(text, false);
  return std::string(static_cast<const char*>(text), static_cast<std::size_t>(text.Length()));
}

class CfgToXml : public ::testing::Test {
 protected:
  TempFolder m_folder;
};

TEST_F(CfgToXml, OptionsComeBeforeGroupsUnderAMainRoot) {
  const LqWString cfg =
      WriteCfg(m_folder, "a{ g{ } o=\"1\" } b{ x=\"&<\" x=\"2\" } top=\"dropped\"");
  XmlDocument document;
  ASSERT_TRUE(LqCfgFile2XmlDocument(cfg, u"/tmp/out.xml", document));
  EXPECT_EQ(XmlText(document),
            "<main><a><o>1</o><g></g></a><b><x>&amp;&lt;</x><x>2</x></b></main>");
  EXPECT_EQ(std::u16string(static_cast<const char16_t*>(document.FileName())), u"/tmp/out.xml");
  EXPECT_FALSE(m_folder.Exists("out.xml"));
}

TEST_F(CfgToXml, EmptyBodyGivesAnEmptyRoot) {
  XmlDocument document;
  ASSERT_TRUE(LqCfgFile2XmlDocument(WriteCfg(m_folder, ""), u"x.xml", document));
  EXPECT_EQ(XmlText(document), "<main></main>");
}

TEST_F(CfgToXml, FailedLoadLeavesTheDocumentAsItWas) {
  XmlDocument document;
  document.Create(u"kept");
  EXPECT_FALSE(LqCfgFile2XmlDocument(m_folder.Wide("missing.cfg"), u"x.xml", document));
  EXPECT_FALSE(LqCfgFile2XmlDocument(nullptr, u"x.xml", document));
  EXPECT_EQ(XmlText(document), "<kept></kept>");
}

// A plant of 10 lines, each with 5 devices of 4 channels (261 groups, 721 options, four deep),
// written the way such files are laid out by hand, with a line's name behind its devices.
struct Plant {
  std::string cfg = "plant\r\n{\r\n  name = \"North & Co\"\r\n";
  std::string xml = "<main><plant><name>North &amp; Co</name>";

  Plant() {
    for (int line = 1; line <= 10; ++line) {
      std::string lineXml;
      cfg += "  line\r\n  {\r\n    id = \"" + std::to_string(line) + "\"\r\n";
      for (int device = 1; device <= 5; ++device) {
        const std::string id = "d" + std::to_string(line) + "." + std::to_string(device);
        cfg += "    device\r\n    {\r\n      id = \"" + id + "\"\r\n      type = \"meter\"\r\n";
        lineXml += "<device><id>" + id + "</id><type>meter</type>";
        for (int channel = 1; channel <= 4; ++channel) {
          const std::string n = std::to_string(channel);
          const std::string scale = "0." + std::to_string(line * channel);
          cfg += "      channel { n = \"" + n + "\" unit = \"kWh\" scale = \"" + scale + "\" }\r\n";
          lineXml +=
              "<channel><n>" + n + "</n><unit>kWh</unit><scale>" + scale + "</scale></channel>";
        }
        cfg += "    }\r\n";
        lineXml += "</device>";
      }
      cfg += "    name = \"Line \\\"" + std::to_string(line) + "\\\"\"\r\n  }\r\n";
      xml += "<line><id>" + std::to_string(line) + "</id><name>Line &quot;" + std::to_string(line) +
             "&quot;</name>" + lineXml + "</line>";
    }
    cfg += "}\r\n";
    xml += "</plant></main>";
  }
};

TEST_F(CfgToXml, RealisticDeviceConfiguration) {
  const Plant plant;
  const LqWString path = WriteCfg(m_folder, plant.cfg, "plant.cfg");

  LqCfgFile file;
  ASSERT_TRUE(file.Load(path));
  EXPECT_EQ(
      OptionText(file.Group(u"plant/line:id='%d'/device:id='d%d.%d'/channel:n='%d'", 7, 7, 3, 4),
                 u"scale"),
      "0.28");
  EXPECT_EQ(OptionText(file.Group(LqWString(u"plant/line:id='10'")), u"name"), "Line \"10\"");
  EXPECT_EQ(file.Group(LqWString(u"plant/line:id='11'/device")), nullptr);

  XmlDocument document;
  ASSERT_TRUE(LqCfgFile2XmlDocument(path, u"plant.xml", document));
  EXPECT_EQ(XmlText(document), plant.xml);
}

}  // namespace
