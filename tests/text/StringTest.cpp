#include <gtest/gtest.h>
#include <lqtools/text/LqBasicString.h>

#include <cstring>
#include <string>

namespace {

std::u16string Units(const LqWString& s) {
  return std::u16string(static_cast<const char16_t*>(s), static_cast<std::size_t>(s.Length()));
}

constexpr uint32_t kBorrowed = LqWString::Borrowed;

TEST(LqString, DefaultIsBorrowedEmptyText) {
  LqWString s;
  EXPECT_EQ(s.Flags(), kBorrowed);
  EXPECT_EQ(s.Length(), 0);
  EXPECT_EQ(static_cast<const char16_t*>(s), LqWideChar::EmptyString());
  LqString n;
  EXPECT_EQ(static_cast<const char*>(n), LqChar::EmptyString());
}

TEST(LqString, AssigningEmptyTextMakesAnOwnerOfOneUnit) {
  LqWString s;
  s = u"";
  EXPECT_EQ(s.Flags() & kBorrowed, 0u);
  EXPECT_NE(static_cast<const char16_t*>(s), LqWideChar::EmptyString());
  EXPECT_EQ(s.Spare(), 0u);
  EXPECT_EQ(s[0], 0);
}

TEST(LqString, BorrowingWrapsTheCallersBufferWithoutCopy) {
  char16_t buffer[] = u"abc";
  LqWString s(buffer, false);
  EXPECT_EQ(static_cast<const char16_t*>(s), buffer);
  EXPECT_EQ(s.Flags(), kBorrowed);
  LqWString copy(buffer, true);
  EXPECT_NE(static_cast<const char16_t*>(copy), buffer);
  EXPECT_EQ(copy, u"abc");
  LqWString fromNull(static_cast<const char16_t*>(nullptr), true);
  EXPECT_EQ(fromNull.Flags() & kBorrowed, 0u);
  EXPECT_TRUE(fromNull.IsEmpty());
}

TEST(LqString, FirstAppendFollowsTheGrowthPolicy) {
  LqWString small(LqWString::GrowSmallBlock);
  small += u'x';
  EXPECT_EQ(small.Flags(), static_cast<uint32_t>(LqWString::GrowSmallBlock));
  EXPECT_EQ(small.Spare(), 254u);

  LqWString none;
  none += u'x';
  EXPECT_EQ(none.Spare(), 0u);
  EXPECT_EQ(none, u"x");

  LqWString large(LqWString::GrowLargeBlock);
  large += LqWString(u"abc");
  EXPECT_EQ(large.Spare(), 65535u - 3u);
}

TEST(LqString, SpareRoomRefillsToTheSlackAfterEachReallocation) {
  LqString s(LqString::GrowSmallBlock);
  s = "";
  for (int i = 0; i < 300; ++i)
    s += 'a';
  // 255 in place, one reallocation that leaves 255, then 44 more in place.
  EXPECT_EQ(s.Spare(), 255u - 44u);
  EXPECT_EQ(s.Length(), 300);
  EXPECT_EQ(std::strlen(s), 300u);
}

TEST(LqString, CopyIsOwnedWithPolicyNoneAndAssignmentKeepsTargetPolicy) {
  LqWString source(LqWString::GrowLargeBlock);
  source += u"text";
  LqWString copy(source);
  EXPECT_EQ(copy.Flags(), 0u);
  EXPECT_EQ(copy, u"text");

  LqWString target(LqWString::GrowSmallBlock);
  target = source;
  EXPECT_EQ(target.Flags(), static_cast<uint32_t>(LqWString::GrowSmallBlock));
  EXPECT_EQ(target.Spare(), 255u);
}

TEST(LqString, AssignFromOwnTextIsSafe) {
  LqWString s(u"hello");
  s.Assign(s + 1, s.Length() - 1);
  EXPECT_EQ(s, u"ello");
  const LqWString& same = s;
  s = same;
  EXPECT_EQ(s, u"ello");
  s += same;
  EXPECT_EQ(s, u"elloello");
}

TEST(LqString, AttachDropsPolicyAndPrepareKeepsIt) {
  LqWString s(LqWString::GrowSmallBlock);
  s.Prepare(10, true);
  EXPECT_EQ(s.Flags(), static_cast<uint32_t>(LqWString::GrowSmallBlock));
  EXPECT_EQ(s.Spare(), 10u);
  EXPECT_EQ(s.Length(), 0);
  char16_t* buffer = s.Prepare(3, false);
  EXPECT_EQ(s.Length(), 3);
  EXPECT_EQ(s.Spare(), 255u);
  buffer[0] = u'a', buffer[1] = u'b', buffer[2] = u'c';
  EXPECT_EQ(s, u"abc");
  s.Attach(u"xy");
  EXPECT_EQ(s.Flags(), kBorrowed);
  EXPECT_EQ(s.Length(), 2);
  s.Attach(nullptr);
  EXPECT_EQ(s.Length(), 0);
  EXPECT_EQ(static_cast<const char16_t*>(s), nullptr);
  s += u'z';  // a null text counts as empty when made owned
  EXPECT_EQ(s, u"z");
}

TEST(LqString, CompactDropsPolicyAndSpareRoom) {
  LqWString s(LqWString::GrowLargeBlock);
  s += u"abc";
  s.Compact();
  EXPECT_EQ(s.Flags(), 0u);
  EXPECT_EQ(s.Spare(), 0u);
  EXPECT_EQ(s, u"abc");
}

TEST(LqString, IndexAcceptsTheTerminatorAndThrowsBeyond) {
  LqWString empty;
  EXPECT_EQ(empty[0], 0);
  for (int bad : {1, -1}) {
    try {
      (void)empty[bad];
      FAIL() << bad;
    } catch (const StdRuntimeException& e) {
      EXPECT_STREQ(e.what(), "Index out of bounds!");
    }
  }
}

TEST(LqString, FindAndReverseFind) {
  const LqWString s(u"abcabc");
  EXPECT_EQ(s.Find(u'c', 0), 2);
  EXPECT_EQ(s.Find(u'c', 3), 5);
  EXPECT_EQ(s.Find(u'z', 0), -1);
  EXPECT_EQ(s.Find(u'a', 99), -1);
  EXPECT_EQ(s.Find(u"ca", 0), 2);
  EXPECT_EQ(s.Find(u"cz", 0), -1);
  EXPECT_EQ(s.Find(u"", 0), -1);
  EXPECT_EQ(s.ReverseFind(u'a'), 3);
  EXPECT_EQ(LqWString().ReverseFind(u'a'), -1);
}

TEST(LqString, PiecesClampTheirCounts) {
  const LqWString s(u"abcdef");
  EXPECT_EQ(s.Left(2), u"ab");
  EXPECT_EQ(s.Left(99), u"abcdef");
  EXPECT_EQ(s.Left(-1), u"");
  EXPECT_EQ(s.Right(2), u"ef");
  EXPECT_EQ(s.Right(99), u"abcdef");
  EXPECT_EQ(s.Mid(2, 2), u"cd");
  EXPECT_EQ(s.Mid(4, 99), u"ef");
  EXPECT_EQ(s.Mid(6, 1), u"");
  EXPECT_EQ(LqWString().Left(3).Flags(), kBorrowed);
  EXPECT_TRUE(s.EndsWith(u"f"));
  EXPECT_FALSE(s.EndsWith(u"e"));
  EXPECT_FALSE(LqWString().EndsWith(u"f"));
}

TEST(LqString, ComparisonIsByUnsignedUnits) {
  EXPECT_EQ(LqChar::Compare("a", "\xC3"), -1);
  EXPECT_EQ(LqChar::Compare("b", "a"), 1);
  EXPECT_EQ(LqChar::Compare("ab", "ab"), 0);
  EXPECT_EQ(LqWideChar::Compare(u"\uFFFF", u"a"), 1);
  EXPECT_TRUE(LqWString(u"Z") < LqWString(u"a"));
  EXPECT_TRUE(LqWString(u"\u00E9") < LqWString(u"\uFB01"));
  EXPECT_TRUE(LqWString(u"ab") != u"abc");
  EXPECT_LT(LqWideChar::Compare(u"ab", u"ac", 2), 0);
  EXPECT_EQ(LqWideChar::Compare(u"ab", u"ac", 1), 0);
}

TEST(LqString, TrimCutsOnlyWhatIsThere) {
  LqWString both(u"  x  ");
  both.Trim(3);
  EXPECT_EQ(both, u"x");

  LqWString left(u"  x  ");
  left.Trim(1);
  EXPECT_EQ(left, u"x  ");

  LqWString blanks(u"   ");
  blanks.Trim(3);
  EXPECT_TRUE(blanks.IsEmpty());
  EXPECT_EQ(blanks.Flags() & kBorrowed, 0u);

  LqWString rightOnly(u"   ");
  rightOnly.Trim(2);
  EXPECT_EQ(rightOnly, u" ");  // the unit at the left index is kept untested

  LqWString borrowed(u"x", false);
  borrowed.Trim(3);
  EXPECT_EQ(borrowed.Flags(), kBorrowed);
}

TEST(LqString, ReplaceAndMakeUpperEditInPlace) {
  LqWString s(u"a-b-\u00e9");
  s.Replace(u'-', u'+');
  s.MakeUpper();
  EXPECT_EQ(s, u"A+B+\u00C9");
}

TEST(LqString, WideningSignExtendsAndNarrowingKeepsTheLowByte) {
  const LqWString wide("\xC3\xA9");
  EXPECT_EQ(Units(wide), std::u16string({0xFFC3, 0xFFA9}));
  const LqWString fromEmpty("");
  EXPECT_EQ(fromEmpty.Flags(), kBorrowed);

  const LqString narrow(u"\u0141b");
  EXPECT_STREQ(narrow, "Ab");
  const LqString narrowEmpty(u"");
  EXPECT_EQ(narrowEmpty.Flags() & kBorrowed, 0u);
  EXPECT_STREQ(LqString(LqWString(u"ok")), "ok");
  EXPECT_EQ(LqWString(LqString("ok")), u"ok");
}

}  // namespace
