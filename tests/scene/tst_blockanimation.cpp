// Block animations: the transform of a node between and beyond its keys, the
// keys kept in order, and the filing of a clip.

#include "kovAllocationLimit.h"
#include "kovDbFixture.h"

#include "scene/kovDbBlockAnimation.h"

#include "Db/OdDbMemoryFiler.h"
#include "Rx/OdError.h"

#include <cmath>

namespace {

using Key = kovDbBlockAnimation::Key;
using Channel = kovDbBlockAnimation::Channel;

const double kPi = 3.14159265358979323846;

// A turn about z, as a quaternion.
Key key(OdInt32 ms, const OdGeVector3d& translation, double degreesAboutZ = 0.0, double scale = 1.0)
{
  Key k;
  k.ms = ms;
  k.translation = translation;
  const double half = degreesAboutZ * kPi / 360.0;
  k.rotation[0] = std::cos(half);
  k.rotation[3] = std::sin(half);
  k.scale = OdGeVector3d(scale, scale, scale);
  return k;
}

class BlockAnimation : public kovDbFixtureWith<kovDbBlockAnimation> {
protected:
  static kovDbBlockAnimationPtr door()
  {
    kovDbBlockAnimationPtr clip = kovDbBlockAnimation::createObject();
    clip->setName(OdString(L"Open"));
    clip->setChannels({ Channel { OdString(L"door"), { key(1000, OdGeVector3d(0, 0, 0), 0.0),
                                                        key(3000, OdGeVector3d(2, 0, 0), 350.0, 3.0) } },
                        Channel { OdString(L"handle"), { key(0, OdGeVector3d(0, 0, 1)) } } });
    return clip;
  }
};

TEST_F(BlockAnimation, nodesMoveLinearlyTurnTheShortWayAndHoldBeyondTheirKeys)
{
  const kovDbBlockAnimationPtr clip = door();
  const struct {
    const char* name;
    const wchar_t* node;
    OdInt32 ms;
    OdGePoint3d origin;
    double degrees;
    double scale;
  } rows[] = {
    { "before the first key", L"door", 0, OdGePoint3d(0, 0, 0), 0.0, 1.0 },
    { "halfway", L"door", 2000, OdGePoint3d(1, 0, 0), -5.0, 2.0 },
    { "a quarter", L"door", 1500, OdGePoint3d(0.5, 0, 0), -2.5, 1.5 },
    { "after the last key", L"door", 9000, OdGePoint3d(2, 0, 0), -10.0, 3.0 },
    { "a single key", L"handle", 500, OdGePoint3d(0, 0, 1), 0.0, 1.0 },
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    OdGeMatrix3d m;
    ASSERT_TRUE(clip->transformAt(OdString(row.node), row.ms, m));
    EXPECT_TRUE(m.getCsOrigin().isEqualTo(row.origin, OdGeTol(1e-12)));
    const OdGeVector3d x = m.getCsXAxis();
    EXPECT_NEAR(x.length(), row.scale, 1e-12);
    EXPECT_NEAR(std::atan2(x.y, x.x) * 180.0 / kPi, row.degrees, 1e-9);
  }
  OdGeMatrix3d m;
  EXPECT_FALSE(clip->transformAt(OdString(L"window"), 100, m));
  EXPECT_TRUE(m.isEqualTo(OdGeMatrix3d::kIdentity));
  EXPECT_EQ(clip->durationMs(), 3000);
}

TEST_F(BlockAnimation, keysAreSortedTheLastOfATimeWinsAndEmptyChannelsGo)
{
  kovDbBlockAnimationPtr clip = kovDbBlockAnimation::createObject();
  clip->setChannels({ Channel { OdString(L"a"), { key(300, OdGeVector3d(3, 0, 0)), key(100, OdGeVector3d(1, 0, 0)),
                                                  key(300, OdGeVector3d(4, 0, 0)) } },
                      Channel { OdString(L"empty"), {} } });
  ASSERT_EQ(clip->channels().size(), 1u);
  const std::vector<Key>& keys = clip->channels()[0].keys;
  ASSERT_EQ(keys.size(), 2u);
  EXPECT_EQ(keys[0].ms, 100);
  EXPECT_EQ(keys[1].translation.x, 4.0);
}

TEST_F(BlockAnimation, aClipReadsBackEqualAndDamagedBytesAreRefused)
{
  const kovDbBlockAnimationPtr clip = door();
  const std::vector<OdUInt8> bytes = kovFiled([&](OdDbDwgFiler* f) { clip->dwgOutFields(f); });

  const auto read = [](const std::vector<OdUInt8>& data, kovDbBlockAnimationPtr& into) {
    OdDbMemoryFiler in;
    in.setExternalBuffer(data.data(), data.size());
    into = kovDbBlockAnimation::createObject();
    try {
      return into->dwgInFields(&in) == eOk && in.bytesLeft() == 0;
    } catch (const OdError&) {
      return false;
    }
  };
  kovDbBlockAnimationPtr back;
  ASSERT_TRUE(read(bytes, back));
  EXPECT_EQ(back->name(), OdString(L"Open"));
  EXPECT_EQ(back->channels(), clip->channels());
  for (size_t length = 0; length < bytes.size(); ++length)
    EXPECT_FALSE(read(std::vector<OdUInt8>(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length)), back))
      << "prefix of " << length;
}

} // namespace
