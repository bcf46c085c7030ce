// The number functions on arbitrary input: a double, two counts and flags from the first bytes,
// the locale separators chosen by one byte (empty, one unit, several units, equal separators),
// and the rest as text for IsValidNumber, ParseFormat and UnformatNumber in both widths. Nothing
// may read or write out of bounds; the results must keep their documented limits.
#include <lqtools/localisation/LqLocaleInformation.h>
#include <lqtools/localisation/NumberFormat.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

struct Separators {
  const char16_t* thousands;
  const char16_t* decimal;
};

const Separators kSeparators[] = {{u",", u"."}, {u".", u","},       {u"", u""},
                                  {u"'.", u"::"}, {u"\u202F", u","}, {u".", u"."},
                                  {u"0", u"1"},  {u"", u"."}};

template <typename T>
T Take(const uint8_t*& data, size_t& size) {
  T value{};
  const size_t n = size < sizeof value ? size : sizeof value;
  std::memcpy(&value, data, n);
  data += n;
  size -= n;
  return value;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > 4096) return 0;
  const auto choice = Take<uint8_t>(data, size);
  const Separators& separators = kSeparators[choice % (sizeof kSeparators / sizeof *kSeparators)];
  localeInformationWide.SetThousandSeparator(separators.thousands);
  localeInformationWide.SetDecimalSeparator(separators.decimal);
  localeInformation.SetThousandSeparator(LqString(LqWString(separators.thousands)));
  localeInformation.SetDecimalSeparator(LqString(LqWString(separators.decimal)));

  const auto value = Take<double>(data, size);
  const auto first = Take<int32_t>(data, size);
  const auto second = Take<int32_t>(data, size);
  const auto flags = Take<uint8_t>(data, size);

  LqString narrow;
  LqWString wide;
  // Counts of any size are fine for the formatters; the integer width is a minimum and is kept
  // small here only so that a run does not spend its time writing zeros.
  FormatInteger(narrow, first, second & 0xFFF);
  FormatNumber(narrow, value, first, flags & 1);
  if (narrow.Length() > 400) std::abort();
  FormatNumber(wide, value, second, flags & 2);
  if (wide.Length() > 400) std::abort();
  FormatNumber(value, first);
  FormatDouble(wide, value, first, second, flags & 4, flags & 8, flags & 16);
  countDecimals(value);
  char digits[kXfecvtBufferSize];
  int position = 0, sign = 0;
  xfecvt(digits, sizeof digits, value, static_cast<unsigned>(first), &position, &sign);
  if (std::strlen(digits) >= sizeof digits) std::abort();

  // The rest as text: bytes for the narrow forms, pairs of bytes as units for the wide ones.
  std::vector<char> bytes(data, data + size);
  bytes.push_back(0);
  std::vector<char16_t> units(size / 2 + 1, 0);
  std::memcpy(units.data(), data, size / 2 * 2);
  IsValidNumber(bytes.data(), first);
  IsValidNumber(units.data(), second);
  int integers = 0, decimals = 0;
  bool left = false, right = false;
  ParseFormat(LqWString(units.data()), integers, decimals, left, right);
  if (integers > 12 || decimals > 9) std::abort();
  FormatDouble(wide, value, integers, decimals, flags & 4, left, right);
  LqWString plain;
  UnformatNumber(units.data(), plain);
  return 0;
}
