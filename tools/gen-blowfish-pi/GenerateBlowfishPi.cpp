// Writes the initial Blowfish state, the first 1042 32-bit words of the fraction of pi, as a C++
// include file. tools/gen-blowfish-pi/generate runs it, and the cipher includes its output, kept
// in the source tree, so that no digit of pi is typed in by hand.
//
//   gen-blowfish-pi <output file>
//
// pi = 16 atan(1/5) - 4 atan(1/239) (Machin), each arc tangent summed as a series in fixed point:
// one integer word, then the fraction in big-endian 32-bit words. Every division truncates, so a
// few guard words at the end absorb the rounding of the some ten thousand terms.
#include <cstdint>
#include <cstdio>
#include <vector>

namespace {

constexpr std::size_t kWords = 18 + 4 * 256;  // the P-array and the four S-boxes
constexpr std::size_t kGuardWords = 3;
constexpr std::size_t kSize = 1 + kWords + kGuardWords;

using Fixed = std::vector<uint32_t>;

bool IsZero(const Fixed& a) {
  for (uint32_t w : a)
    if (w != 0) return false;
  return true;
}

// a = a / d, truncated.
void Divide(Fixed& a, uint32_t d) {
  uint64_t rest = 0;
  for (uint32_t& w : a) {
    const uint64_t n = (rest << 32) | w;
    w = static_cast<uint32_t>(n / d);
    rest = n % d;
  }
}

// out = a / d, truncated.
void DivideInto(Fixed& out, const Fixed& a, uint32_t d) {
  out = a;
  Divide(out, d);
}

void Add(Fixed& a, const Fixed& b) {
  uint64_t carry = 0;
  for (std::size_t i = a.size(); i-- > 0;) {
    const uint64_t n = uint64_t{a[i]} + b[i] + carry;
    a[i] = static_cast<uint32_t>(n);
    carry = n >> 32;
  }
}

void Subtract(Fixed& a, const Fixed& b) {
  uint64_t borrow = 0;
  for (std::size_t i = a.size(); i-- > 0;) {
    const uint64_t n = uint64_t{a[i]} - b[i] - borrow;
    a[i] = static_cast<uint32_t>(n);
    borrow = (n >> 32) & 1;
  }
}

// factor * atan(1/x) = sum over k of (-1)^k factor / ((2k+1) x^(2k+1)).
Fixed ArcTangent(uint32_t factor, uint32_t x) {
  Fixed power(kSize, 0);
  power[0] = factor;
  Divide(power, x);
  Fixed sum = power;
  Fixed term(kSize, 0);
  const uint32_t square = x * x;
  for (uint32_t k = 1;; ++k) {
    Divide(power, square);
    if (IsZero(power)) break;
    DivideInto(term, power, 2 * k + 1);
    if (k % 2 != 0) {
      Subtract(sum, term);
    } else {
      Add(sum, term);
    }
  }
  return sum;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s <output file>\n", argv[0]);
    return 2;
  }
  Fixed pi = ArcTangent(16, 5);
  Subtract(pi, ArcTangent(4, 239));
  if (pi[0] != 3 || pi[1] != 0x243f6a88u) {
    std::fprintf(stderr, "%s: the series did not give pi\n", argv[0]);
    return 1;
  }

  std::FILE* out = std::fopen(argv[1], "w");
  if (!out) {
    std::perror(argv[1]);
    return 1;
  }
  std::fprintf(
      out,
      "// Written by tools/gen-blowfish-pi/generate; do not edit: the fraction of pi in 32-bit words,\n"
      "// first the 18 words of the P-array, then the four S-boxes of 256 words.\n");
  for (std::size_t i = 0; i < kWords; ++i)
    std::fprintf(out, "0x%08x,%s", static_cast<unsigned>(pi[1 + i]), i % 6 == 5 ? "\n" : " ");
  std::fprintf(out, "\n");
  if (std::fclose(out) != 0) {
    std::perror(argv[1]);
    return 1;
  }
  return 0;
}
