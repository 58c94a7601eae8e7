// Drawing: what the recorder keeps of each primitive, and the colours of the
// standard palette that the host paints them in.
#include "Cm/OdCmEntityColor.h"
#include "Gi/OdGiRasterImage.h"
#include "Gi/OdGiWorldDrawRecorder.h"

#include "kovChecks.h"

namespace {

const double kPi = 3.14159265358979323846;
const double kTol = 1e-12;

const OdGeVector3d kZ(0.0, 0.0, 1.0);

} // namespace

// A drawable sees only the abstract interfaces; these tests draw through them.
class GiRecorder : public ::testing::Test {
protected:
  OdGiWorldDrawRecorder recorder;
  OdGiWorldDraw& wd = recorder;
};

TEST_F(GiRecorder, NestedTransformsApplyInnermostFirstAndPopRestores)
{
  const OdGePoint3d p(1.0, 0.0, 0.0);
  wd.geometry().pushModelTransform(OdGeMatrix3d::translation(OdGeVector3d(10.0, 0.0, 0.0)));
  wd.geometry().pushModelTransform(OdGeMatrix3d::rotation(kPi / 2.0, kZ));
  wd.geometry().polyline(1, &p);
  wd.geometry().popModelTransform();
  wd.geometry().polyline(1, &p);
  wd.geometry().popModelTransform();
  wd.geometry().polyline(1, &p);

  const auto& records = recorder.records();
  ASSERT_EQ(records.size(), 3u);
  // Rotated first (to 0,1,0), then moved: not moved then rotated (0,11,0).
  expectPointNear(records[0].points[0], OdGePoint3d(10.0, 1.0, 0.0), kTol);
  expectPointNear(records[1].points[0], OdGePoint3d(11.0, 0.0, 0.0), kTol);
  expectPointNear(records[2].points[0], OdGePoint3d(1.0, 0.0, 0.0), kTol);
  EXPECT_TRUE(records[2].modelTransform.isEqualTo(OdGeMatrix3d()));
  EXPECT_TRUE(recorder.getModelToWorldTransform().isEqualTo(OdGeMatrix3d()));
}

TEST_F(GiRecorder, RecordsTheTraitsInForceForEachPrimitive)
{
  const OdGePoint3d square[4] = { { 0, 0, 0 }, { 1, 0, 0 }, { 1, 1, 0 }, { 0, 1, 0 } };
  OdGiSubEntityTraits& traits = wd.subEntityTraits();
  traits.setColor(1);
  traits.setLineWeight(35);
  traits.setSelectionMarker(7);
  wd.geometry().polyline(4, square, nullptr, 3);
  traits.setTrueColor(OdCmEntityColor(10, 20, 30));
  wd.geometry().polygon(4, square);
  traits.setColor(300); // out of range: ignored
  wd.geometry().circle(OdGePoint3d(), 1.0, kZ);

  const auto& records = recorder.records();
  ASSERT_EQ(records.size(), 3u);
  EXPECT_EQ(records[0].kind, OdGiPrimitiveRecord::kPolyline);
  EXPECT_EQ(records[0].color.colorIndex(), 1);
  EXPECT_EQ(records[0].lineWeight, 35);
  EXPECT_EQ(records[0].selectionMarker, 7);
  EXPECT_EQ(records[0].baseSubEntMarker, 3);
  EXPECT_EQ(records[1].kind, OdGiPrimitiveRecord::kPolygon);
  EXPECT_TRUE(records[1].color.isByColor());
  EXPECT_EQ(records[1].color.green(), 20);
  EXPECT_EQ(records[2].color, OdCmEntityColor(10, 20, 30));
  EXPECT_EQ(traits.color(), OdCmEntityColor::lookUpACI(10, 20, 30));
}

TEST_F(GiRecorder, RasterImageIsCopiedAndItsEdgesIgnoreTranslation)
{
  OdGiRasterImage image(2, 1);
  image.setPixel(1, 0, 0x11, 0x22, 0x33, 0x44);
  wd.geometry().pushModelTransform(OdGeMatrix3d::translation(OdGeVector3d(5.0, 5.0, 5.0)));
  wd.geometry().rasterImageDc(OdGePoint3d(), OdGeVector3d(2.0, 0.0, 0.0), OdGeVector3d(0.0, 1.0, 0.0), &image, true);
  image.setPixel(1, 0, 0, 0, 0, 0);

  const OdGiPrimitiveRecord& record = recorder.records().at(0);
  EXPECT_EQ(record.kind, OdGiPrimitiveRecord::kRasterImage);
  expectPointNear(record.points[0], OdGePoint3d(5.0, 5.0, 5.0), kTol);
  expectVectorNear(record.direction, OdGeVector3d(2.0, 0.0, 0.0), kTol);
  expectVectorNear(record.secondDirection, OdGeVector3d(0.0, 1.0, 0.0), kTol);
  EXPECT_TRUE(record.transparency);
  ASSERT_FALSE(record.image.isNull());
  EXPECT_EQ(record.image->pixel(1, 0), 0x44112233u);
}

TEST(CmEntityColor, ColorIndexSelectsTheMethodAndThePalettesComponents)
{
  struct Case {
    OdInt16 index;
    OdCmEntityColor::ColorMethod method;
  };
  const Case cases[] = {
    { 0, OdCmEntityColor::kByBlock },  { 256, OdCmEntityColor::kByLayer },   { 257, OdCmEntityColor::kNone },
    { 7, OdCmEntityColor::kForeground }, { 1, OdCmEntityColor::kByACI },     { 255, OdCmEntityColor::kByACI },
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.index);
    OdCmEntityColor color(OdCmEntityColor::kByColor);
    EXPECT_EQ(color.setColorIndex(c.index), eOk);
    EXPECT_EQ(color.colorMethod(), c.method);
    EXPECT_EQ(color.colorIndex(), c.index);
  }
  OdCmEntityColor color;
  ASSERT_EQ(color.setColorIndex(30), eOk);
  EXPECT_TRUE(color.isByACI());
  EXPECT_EQ(color.red(), 255);
  EXPECT_EQ(color.green(), 127);
  EXPECT_EQ(color.blue(), 0);
}
