#include <gtest/gtest.h>
#include <lqtools/json/JsonDocument.h>
#include <lqtools/security/uuid.h>
#include <lqtools/text/Unicode.h>
#include <lqtools/xml/XmlDocument.h>

#include <exception>
#include <set>
#include <string>

#include "support/TempFolder.h"

namespace {

const uuid kSample(0x12345678, 0x9ABC, 0xDEF0, 0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF);
constexpr char kSampleText[] = "12345678-9ABC-DEF0-0123-456789ABCDEF";

std::u16string Wide(const std::string& text) { return {text.begin(), text.end()}; }

TEST(Uuid, TextFormsAreUpperCaseWithHyphens) {
  EXPECT_EQ(uuid::null.toString(), "00000000-0000-0000-0000-000000000000");
  EXPECT_EQ(kSample.toString(), kSampleText);
  EXPECT_EQ(kSample.toWString(), Wide(kSampleText));
  char narrow[37];
  EXPECT_STREQ(guidtoc(kSample, narrow), kSampleText);
  char16_t wide[40];
  EXPECT_EQ(std::u16string(guidtow(kSample, wide, 40)), Wide(kSampleText));
  EXPECT_EQ(std::u16string(guidtow(kSample, wide, 9)), u"12345678");
}

TEST(Uuid, FieldsConstructionAndOrdering) {
  const unsigned char bytes[8] = {1, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF};
  EXPECT_EQ(uuid(0x12345678, 0x9ABC, 0xDEF0, bytes), kSample);
  uuid value = kSample;
  EXPECT_EQ(value.data1(), 0x12345678u);
  EXPECT_EQ(value.data2(), 0x9ABC);
  EXPECT_EQ(value.data4()[7], 0xEF);
  value.clear();
  EXPECT_TRUE(value.is_null());
  // data1 decides before anything else, although in memory its low byte comes first.
  const uuid low(0x000000FF, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
  const uuid high(0x00000100, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
  EXPECT_TRUE(low < high);
  EXPECT_FALSE(high < low);
  EXPECT_TRUE(uuid(1, 2, 3, 0, 0, 0, 0, 0, 0, 0, 1) < uuid(1, 2, 3, 0, 0, 0, 0, 0, 0, 0, 2));
  EXPECT_NE(low, high);
}

TEST(Uuid, CreatedValuesAreRandomVersionFour) {
  std::set<std::string> seen;
  for (int i = 0; i < 100; ++i) {
    uuid id;
    ASSERT_TRUE(NewGUID(&id));
    const std::string text = id.toString();
    EXPECT_EQ(text[14], '4');
    EXPECT_NE(std::string("89AB").find(text[19]), std::string::npos);
    seen.insert(text);
  }
  EXPECT_EQ(seen.size(), 100u);
  EXPECT_FALSE(NewGUID(nullptr));
}

TEST(Uuid, NarrowParserWantsExactlyTheTextForm) {
  EXPECT_TRUE(uuid::isValidUuid("12345678-9abc-def0-0123-456789abcdef"));
  EXPECT_EQ(uuid::createFromString("12345678-9abc-def0-0123-456789abcdef").toString(), kSampleText);
  for (const char* bad :
       {"", "12345678-9ABC-DEF0-0123-456789ABCDE", "{12345678-9ABC-DEF0-0123-456789ABCDEF}",
        "12345678-9ABC-DEF0-0123-456789ABCDEF ", "12345678+9ABC-DEF0-0123-456789ABCDEF",
        "1234567G-9ABC-DEF0-0123-456789ABCDEF"}) {
    EXPECT_FALSE(uuid::isValidUuid(bad)) << bad;
    EXPECT_THROW(uuid::createFromString(bad), std::exception) << bad;
  }
}

TEST(Uuid, WideParserToleratesOneBlankBehind) {
  EXPECT_EQ(wtouuid(u"12345678-9ABC-DEF0-0123-456789ABCDEF"), kSample);
  EXPECT_EQ(wtouuid(u"12345678-9ABC-DEF0-0123-456789ABCDEF and more"), kSample);
  for (const char16_t* bad :
       {u"12345678-9ABC-DEF0-0123-456789ABCDE", u"12345678-9ABC-DEF0-0123-456789ABCDEFx",
        u"12345678-9ABC-DEF0-0123-456789ABCDEF0", u"", u"{12345678-9ABC-DEF0-0123-456789ABCDEF}"})
    EXPECT_TRUE(wtouuid(bad).is_null());
  EXPECT_TRUE(wtouuid(nullptr).is_null());
  // Digits are read as upper case: lower-case ones are accepted but read otherwise.
  EXPECT_NE(wtouuid(u"12345678-9abc-def0-0123-456789abcdef"), kSample);
}

TEST(Uuid, RoundTripsThroughXmlAndJsonFiles) {
  TempFolder folder;
  const uuid id = uuid::create();
  {
    XmlDocument document;
    document.Create(u"root");
    document.Root()->SetValue(u"id", id);
    document.Root()->SetValue("spare", uuid::null);
    document.Root()->NewChild(u"own")->SetValue(kSample);
    ASSERT_TRUE(document.SaveAs(folder.Wide("ids.xml")));
    XmlDocument loaded;
    ASSERT_TRUE(loaded.Load(folder.Wide("ids.xml")));
    EXPECT_EQ(wtouuid(loaded.Root()->Value(u"id", u"")), id);
    EXPECT_TRUE(wtouuid(loaded.Root()->Value(u"spare", u"")).is_null());
    EXPECT_EQ(wtouuid(loaded.Root()->Value(u"own", u"")), kSample);
  }
  {
    JsonDocument document;
    document.Create(6);
    document.Root()->SetValue(u"id", id);
    document.Root()->NewChild(u"other", 6)->SetValue(u"id", kSample);
    ASSERT_TRUE(document.SaveAs(folder.Wide("ids.json")));
    JsonDocument loaded;
    ASSERT_TRUE(loaded.Load(folder.Wide("ids.json")));
    EXPECT_EQ(wtouuid(loaded.Root()->ValueString(u"id", u"")), id);
    EXPECT_EQ(uuid::createFromString(
                  folder.Read("ids.json").substr(folder.Read("ids.json").find("12345678"), 36)),
              kSample);
  }
}

}  // namespace
