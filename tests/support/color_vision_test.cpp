#include "support/color_vision.h"

#include <gtest/gtest.h>

namespace vexel::test {
namespace {

// Pairs that the authors of the formula's notes published to tell wrong implementations apart.
TEST(ColorVision, DifferencesAreThePublishedOnes) {
  struct Case {
    Lab x, y;
    double difference;
  };
  for (const Case& c : {
           Case{{50, 2.6772, -79.7751}, {50, 0, -82.7485}, 2.0425},
           Case{{50, 2.8361, -74.0200}, {50, 0, -82.7485}, 3.4412},
           Case{{50, -1.3802, -84.2814}, {50, 0, -82.7485}, 1.0000},
           Case{{50, 0, 0}, {50, -1, 2}, 2.3669},
           Case{{50, 2.4900, -0.0010}, {50, -2.4900, 0.0009}, 7.1792},
           Case{{50, 2.4900, -0.0010}, {50, -2.4900, 0.0011}, 7.2195},
           Case{{50, -0.0010, 2.4900}, {50, 0.0009, -2.4900}, 4.8045},
           Case{{50, -0.0010, 2.4900}, {50, 0.0011, -2.4900}, 4.7461},
           Case{{50, 2.5, 0}, {50, 0, -2.5}, 4.3065},
           Case{{50, 2.5, 0}, {73, 25, -18}, 27.1492},
           Case{{50, 2.5, 0}, {61, -5, 29}, 22.8977},
           Case{{50, 2.5, 0}, {56, -27, -3}, 31.9030},
           Case{{60.2574, -34.0099, 36.2677}, {60.4626, -34.1751, 39.4387}, 1.2644},
           Case{{63.0109, -31.0961, -5.8663}, {62.8187, -29.7946, -4.0864}, 1.2630},
           Case{{22.7233, 20.0904, -46.6940}, {23.0331, 14.9730, -42.5619}, 2.0373},
           Case{{90.8027, -2.0831, 1.4410}, {91.1528, -1.6435, 0.0447}, 1.4441},
           Case{{2.0776, 0.0795, -1.1350}, {0.9033, -0.0636, -0.5514}, 0.9082},
       }) {
    EXPECT_NEAR(Difference(c.x, c.y), c.difference, 0.00005);
    EXPECT_NEAR(Difference(c.y, c.x), c.difference, 0.00005);
  }
}

}  // namespace
}  // namespace vexel::test
