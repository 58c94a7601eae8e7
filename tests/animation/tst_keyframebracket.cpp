// The bracket of keyframes around a time: the binary search that evaluation
// uses must answer exactly what the walk over the keys answers.
#include "kovAnimationTestValues.h"

#include <QMultiMap>

#include <climits>
#include <random>
#include <vector>

namespace {

struct Bracket {
  bool onKey = false;
  int prevIndex = -1, prevTime = -1, nextIndex = -1, nextTime = -1;
  double fraction = -1.0;
  bool operator==(const Bracket& o) const
  {
    return onKey == o.onKey && prevIndex == o.prevIndex && prevTime == o.prevTime && nextIndex == o.nextIndex
           && nextTime == o.nextTime && fraction == o.fraction;
  }
};

std::ostream& operator<<(std::ostream& os, const Bracket& b)
{
  return os << "{on " << b.onKey << ", prev " << b.prevIndex << "@" << b.prevTime << ", next " << b.nextIndex << "@"
            << b.nextTime << ", f " << b.fraction << "}";
}

Bracket searched(const kovAnimationItem& item, int ms)
{
  Bracket b;
  b.onKey = item.findKeyFrame(ms, b.prevIndex, b.prevTime, b.nextIndex, b.nextTime, b.fraction);
  return b;
}

Bracket walked(const kovAnimationItem& item, int ms)
{
  Bracket b;
  b.onKey = item.findKeyFrameByWalk(ms, b.prevIndex, b.prevTime, b.nextIndex, b.nextTime, b.fraction);
  return b;
}

kovAnimationItem itemWithKeys(const std::vector<int>& keys)
{
  kovAnimationItem item;
  QMap<int, QVariant> values;
  for (int key : keys)
    values.insert(key, 1.0);
  item.setValues(values);
  return item;
}

TEST(KeyframeBracket, followsTheDocumentedCases)
{
  struct Case {
    std::vector<int> keys;
    int ms;
    Bracket expected;
  };
  const Case cases[] = {
    { {}, 5, { false, 0, 0, 0, 0, 0.0 } },
    { { 100, 200, 400 }, 50, { false, 0, 100, 0, 100, 0.0 } },   // before the first key
    { { 100, 200, 400 }, 100, { true, 0, 100, 1, 200, 0.0 } },   // on the first key
    { { 100, 200, 400 }, 150, { false, 0, 100, 1, 200, 0.5 } },  // between
    { { 100, 200, 400 }, 200, { true, 1, 200, 2, 400, 0.0 } },   // on an inner key
    { { 100, 200, 400 }, 250, { false, 1, 200, 2, 400, 0.25 } }, // between
    { { 100, 200, 400 }, 400, { true, 1, 200, 2, 400, 1.0 } },   // on the last key
    { { 100, 200, 400 }, 401, { false, 2, 400, 2, 400, 1.0 } },  // after the last
    { { 300 }, 300, { true, 0, 0, 0, 300, 1.0 } },               // the only key keeps prev at zero
    { { 300 }, 200, { false, 0, 300, 0, 300, 0.0 } },
    { { 300 }, 301, { false, 0, 300, 0, 300, 1.0 } },
    { { 0 }, 0, { true, 0, 0, 0, 0, 0.0 } },
    { { -300 }, -300, { true, 0, 0, 0, -300, 1.0 } },
    { { INT_MIN, INT_MAX }, 0, { false, 0, INT_MIN, 1, INT_MAX, 2147483648.0 / 4294967295.0 } },
    { { INT_MIN, INT_MAX }, INT_MIN, { true, 0, INT_MIN, 1, INT_MAX, 0.0 } },
    { { INT_MIN, INT_MAX }, INT_MAX, { true, 0, INT_MIN, 1, INT_MAX, 1.0 } },
    { { INT_MIN + 1 }, INT_MIN, { false, 0, INT_MIN + 1, 0, INT_MIN + 1, 0.0 } },
    { { INT_MAX - 1 }, INT_MAX, { false, 0, INT_MAX - 1, 0, INT_MAX - 1, 1.0 } },
  };
  for (const Case& c : cases) {
    const kovAnimationItem item = itemWithKeys(c.keys);
    EXPECT_EQ(searched(item, c.ms), c.expected) << "at " << c.ms << " over " << c.keys.size() << " keys";
    EXPECT_EQ(walked(item, c.ms), c.expected) << "at " << c.ms << " over " << c.keys.size() << " keys";
  }
}

TEST(KeyframeBracket, binarySearchAgreesWithTheWalkOnRandomKeys)
{
  std::mt19937 random(20240611u);
  const int specials[] = { INT_MIN, INT_MIN + 1, -1, 0, 1, INT_MAX - 1, INT_MAX };
  int compared = 0;
  for (int set = 0; set < 2000; ++set) {
    // Narrow ranges make times fall on keys and next to them often.
    const int span = set % 3 == 0 ? 20 : set % 3 == 1 ? 1000 : INT_MAX;
    std::uniform_int_distribution<int> keyAt(-span, span);
    std::vector<int> keys(static_cast<size_t>(1 + random() % 12));
    for (int& key : keys)
      key = random() % 8 == 0 ? specials[random() % 7] : keyAt(random);
    const kovAnimationItem item = itemWithKeys(keys);

    std::vector<int> times(std::begin(specials), std::end(specials));
    for (int key : item.values().keys()) {
      times.push_back(key);
      if (key > INT_MIN)
        times.push_back(key - 1);
      if (key < INT_MAX)
        times.push_back(key + 1);
    }
    for (int i = 0; i < 10; ++i)
      times.push_back(keyAt(random));
    for (int ms : times) {
      ASSERT_EQ(searched(item, ms), walked(item, ms)) << "set " << set << " at " << ms;
      ++compared;
    }
  }
  EXPECT_GT(compared, 50000);
}

TEST(KeyframeBracket, repeatedKeysOfAMultiMapBracketLikeTheWalk)
{
  QMultiMap<int, QVariant> values;
  for (int key : { 10, 10, 20, 20, 20, 30, 30 })
    values.insert(key, 1.0);
  kovAnimationItem item;
  item.setValues(values);
  for (int ms = 0; ms <= 40; ms += 5)
    EXPECT_EQ(searched(item, ms), walked(item, ms)) << ms;
}

TEST(KeyframeBracket, followsEveryChangeOfTheKeys)
{
  kovAnimationItem item = itemWithKeys({ 0, 100 });
  EXPECT_EQ(searched(item, 50).fraction, 0.5);
  item.setValue(200, 1.0);
  EXPECT_EQ(searched(item, 150), walked(item, 150));
  EXPECT_EQ(searched(item, 150).nextTime, 200);
  item.removeValue(200);
  EXPECT_EQ(searched(item, 150).prevTime, 100);
  item.clearValues();
  EXPECT_FALSE(searched(item, 0).onKey);
  EXPECT_EQ(searched(item, 0).nextTime, 0);
}

} // namespace
