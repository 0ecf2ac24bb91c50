// Numbers of about 32 decimal digits, the same on every machine.

#ifndef VEXEL_KIT_CLASSES_TWOFOLD_H_
#define VEXEL_KIT_CLASSES_TWOFOLD_H_

namespace vexel {

// The unevaluated sum of two doubles, of which `high` is the sum rounded (T. J. Dekker, "A
// floating-point technique for extending the available precision", Numerische Mathematik 18, 1971).
// The error of an operation is a few units of 2^-105, in a sum relative to its terms. Operands must
// be below 2^990, so that splitting them does not overflow.
struct Twofold {
  double high = 0.0;
  double low = 0.0;
};

// Of |a| >= |b|, or a zero.
constexpr Twofold OrderedSum(double a, double b) {
  const double sum = a + b;
  return {sum, b - (sum - a)};
}

// The exact sum of two doubles (D. E. Knuth, The Art of Computer Programming, volume 2, 4.2.2).
constexpr Twofold ExactSum(double a, double b) {
  const double sum = a + b;
  const double part = sum - a;
  return {sum, (a - (sum - part)) + (b - part)};
}

// The upper half of the digits; the rest is exact in a double, too.
constexpr double UpperHalf(double a) {
  const double shifted = a * 134217729.0;  // 2^27 + 1
  return shifted - (shifted - a);
}

// The exact product of two doubles.
constexpr Twofold ExactProduct(double a, double b) {
  const double product = a * b;
  const double aUpper = UpperHalf(a);
  const double bUpper = UpperHalf(b);
  const double aLower = a - aUpper;
  const double bLower = b - bUpper;
  return {product,
          ((aUpper * bUpper - product) + aUpper * bLower + aLower * bUpper) + aLower * bLower};
}

constexpr Twofold operator+(Twofold a, Twofold b) {
  const Twofold sum = ExactSum(a.high, b.high);
  return OrderedSum(sum.high, sum.low + (a.low + b.low));
}

constexpr Twofold operator-(Twofold a) { return {-a.high, -a.low}; }

constexpr Twofold operator-(Twofold a, Twofold b) { return a + -b; }

constexpr Twofold operator*(Twofold a, Twofold b) {
  const Twofold product = ExactProduct(a.high, b.high);
  return OrderedSum(product.high, product.low + (a.high * b.low + a.low * b.high));
}

constexpr Twofold operator*(Twofold a, double b) {
  const Twofold product = ExactProduct(a.high, b);
  return OrderedSum(product.high, product.low + a.low * b);
}

constexpr Twofold operator/(Twofold a, double divisor) {
  const double quotient = a.high / divisor;
  const Twofold rest = a - ExactProduct(quotient, divisor);
  return OrderedSum(quotient, rest.high / divisor);
}

}  // namespace vexel

#endif  // VEXEL_KIT_CLASSES_TWOFOLD_H_
