#include "Gi/OdGiRasterImage.h"
#include "Gi/OdGiWorldDrawRecorder.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <vector>

namespace {

const double kPi = 3.14159265358979323846;
const double kTol = 1e-12;

void expectPoint(const OdGePoint3d& actual, double x, double y, double z)
{
  EXPECT_NEAR(actual.x, x, kTol);
  EXPECT_NEAR(actual.y, y, kTol);
  EXPECT_NEAR(actual.z, z, kTol);
}

void expectVector(const OdGeVector3d& actual, double x, double y, double z)
{
  EXPECT_NEAR(actual.x, x, kTol);
  EXPECT_NEAR(actual.y, y, kTol);
  EXPECT_NEAR(actual.z, z, kTol);
}

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
  expectPoint(records[0].points[0], 10.0, 1.0, 0.0);
  expectPoint(records[1].points[0], 11.0, 0.0, 0.0);
  expectPoint(records[2].points[0], 1.0, 0.0, 0.0);
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

TEST_F(GiRecorder, CircleRadiusAndNormalFollowTheTransform)
{
  OdGeMatrix3d m = OdGeMatrix3d::translation(OdGeVector3d(0.0, 0.0, 5.0)) * OdGeMatrix3d::rotation(kPi / 2.0, OdGeVector3d(1.0, 0.0, 0.0))
      * OdGeMatrix3d::scaling(2.0);
  wd.geometry().pushModelTransform(m);
  wd.geometry().circle(OdGePoint3d(1.0, 0.0, 0.0), 3.0, kZ);

  ASSERT_EQ(recorder.records().size(), 1u);
  const OdGiPrimitiveRecord& circle = recorder.records()[0];
  expectPoint(circle.points[0], 2.0, 0.0, 5.0);
  expectVector(circle.normal, 0.0, -1.0, 0.0);
  EXPECT_NEAR(circle.radius, 6.0, kTol);
}

TEST_F(GiRecorder, NormalsStayPerpendicularUnderNonUniformScaling)
{
  OdGeMatrix3d stretch;
  stretch.entry[0][0] = 4.0;
  wd.geometry().pushModelTransform(stretch);
  // A plane through the x and y=x directions: normal (1,-1,0)/sqrt2 before.
  const OdGePoint3d pts[3] = { { 0, 0, 0 }, { 0, 0, 1 }, { 1, 1, 0 } };
  const OdGeVector3d normal(1.0, -1.0, 0.0);
  wd.geometry().polygon(3, pts, &normal);

  const OdGiPrimitiveRecord& polygon = recorder.records().at(0);
  ASSERT_TRUE(polygon.hasNormal);
  const OdGeVector3d inPlane1 = polygon.points[1] - polygon.points[0];
  const OdGeVector3d inPlane2 = polygon.points[2] - polygon.points[0];
  EXPECT_NEAR(polygon.normal.dotProduct(inPlane1), 0.0, kTol);
  EXPECT_NEAR(polygon.normal.dotProduct(inPlane2), 0.0, kTol);
  EXPECT_NEAR(polygon.normal.length(), 1.0, kTol);
}

TEST_F(GiRecorder, TextKeepsItsFrameAndScalesItsHeight)
{
  wd.geometry().pushModelTransform(OdGeMatrix3d::scaling(3.0) * OdGeMatrix3d::rotation(kPi / 2.0, kZ));
  wd.geometry().text(OdGePoint3d(1.0, 0.0, 0.0), kZ, OdGeVector3d(1.0, 0.0, 0.0), 2.0, 0.8, 0.1, OdString(L"Scene 1"));

  const OdGiPrimitiveRecord& text = recorder.records().at(0);
  EXPECT_EQ(text.kind, OdGiPrimitiveRecord::kText);
  expectPoint(text.points[0], 0.0, 3.0, 0.0);
  expectVector(text.direction, 0.0, 3.0, 0.0);
  expectVector(text.normal, 0.0, 0.0, 1.0);
  EXPECT_NEAR(text.height, 6.0, kTol);
  EXPECT_DOUBLE_EQ(text.widthFactor, 0.8);
  EXPECT_DOUBLE_EQ(text.oblique, 0.1);
  EXPECT_EQ(text.text, OdString(L"Scene 1"));
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
  expectPoint(record.points[0], 5.0, 5.0, 5.0);
  expectVector(record.direction, 2.0, 0.0, 0.0);
  expectVector(record.secondDirection, 0.0, 1.0, 0.0);
  EXPECT_TRUE(record.transparency);
  ASSERT_FALSE(record.image.isNull());
  EXPECT_EQ(record.image->pixel(1, 0), 0x44112233u);
}

TEST_F(GiRecorder, ShellKeepsValidFaceListsAndRejectsBrokenOnes)
{
  const OdGePoint3d pts[5] = { { 0, 0, 0 }, { 4, 0, 0 }, { 4, 4, 0 }, { 0, 4, 0 }, { 2, 2, 0 } };
  struct Case {
    const char* what;
    std::vector<OdInt32> faces;
    bool kept;
  };
  const Case cases[] = {
    { "two triangles", { 3, 0, 1, 2, 3, 0, 2, 3 }, true },
    { "quad with a hole", { 4, 0, 1, 2, 3, -3, 4, 1, 2 }, true },
    { "index past the vertices", { 3, 0, 1, 5 }, false },
    { "negative index", { 3, 0, -1, 2 }, false },
    { "count runs past the end", { 4, 0, 1, 2 }, false },
    { "zero count", { 0, 3, 0, 1, 2 }, false },
    { "hole before any face", { -3, 0, 1, 2 }, false },
    { "huge count", { 2147483647, 0 }, false },
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    recorder.clear();
    wd.geometry().shell(5, pts, static_cast<OdInt32>(c.faces.size()), c.faces.data());
    ASSERT_EQ(recorder.records().size(), c.kept ? 1u : 0u);
    EXPECT_EQ(recorder.rejectedCount(), c.kept ? 0 : 1);
    if (c.kept) {
      const OdIntArray& kept = recorder.records()[0].faceList;
      EXPECT_EQ(std::vector<int>(kept.begin(), kept.end()), c.faces);
    }
  }
}

TEST_F(GiRecorder, UnusableInputIsCountedNotRecorded)
{
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const OdGePoint3d good[2] = { { 0, 0, 0 }, { 1, 0, 0 } };
  const OdGePoint3d withNan[2] = { { 0, 0, 0 }, { nan, 0, 0 } };
  const OdGeVector3d zero;
  const OdGeVector3d x(1.0, 0.0, 0.0);
  OdGiWorldGeometry& g = wd.geometry();
  struct Case {
    const char* what;
    std::function<void()> draw;
  };
  const Case cases[] = {
    { "polyline without vertices", [&] { g.polyline(0, good); } },
    { "polyline with a null list", [&] { g.polyline(2, nullptr); } },
    { "polyline with a NaN vertex", [&] { g.polyline(2, withNan); } },
    { "polygon with a zero normal", [&] { g.polygon(2, good, &zero); } },
    { "circle with a negative radius", [&] { g.circle(OdGePoint3d(), -1.0, kZ); } },
    { "circle with a NaN radius", [&] { g.circle(OdGePoint3d(), nan, kZ); } },
    { "circle with a zero normal", [&] { g.circle(OdGePoint3d(), 1.0, zero); } },
    { "text along its normal", [&] { g.text(OdGePoint3d(), x, x, 1.0, 1.0, 0.0, OdString(L"t")); } },
    { "text with a NaN height", [&] { g.text(OdGePoint3d(), kZ, x, nan, 1.0, 0.0, OdString(L"t")); } },
    { "image without an image", [&] { g.rasterImageDc(OdGePoint3d(), x, kZ, nullptr); } },
    { "shell without a face list", [&] { g.shell(2, good, 0, nullptr); } },
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    recorder.clear();
    c.draw();
    EXPECT_TRUE(recorder.records().empty());
    EXPECT_EQ(recorder.rejectedCount(), 1);
  }
}

TEST_F(GiRecorder, ExtentsAreKeptInWorldCoordinates)
{
  EXPECT_FALSE(recorder.extents().isValidExtents());
  const OdGePoint3d box[2] = { { 0, 0, 0 }, { 1, 2, 3 } };
  wd.geometry().pushModelTransform(OdGeMatrix3d::translation(OdGeVector3d(10.0, 0.0, 0.0)));
  wd.geometry().setExtents(box);
  expectPoint(recorder.extents().minPoint(), 10.0, 0.0, 0.0);
  expectPoint(recorder.extents().maxPoint(), 11.0, 2.0, 3.0);
}

TEST_F(GiRecorder, ClearStartsAFreshDrawing)
{
  const OdGePoint3d p;
  wd.subEntityTraits().setColor(3);
  wd.geometry().pushModelTransform(OdGeMatrix3d::scaling(2.0));
  wd.geometry().polyline(1, &p);
  wd.geometry().polyline(0, &p);
  recorder.clear();
  EXPECT_TRUE(recorder.records().empty());
  EXPECT_EQ(recorder.rejectedCount(), 0);
  EXPECT_TRUE(recorder.trueColor().isByLayer());
  EXPECT_TRUE(recorder.getModelToWorldTransform().isEqualTo(OdGeMatrix3d()));
}

TEST_F(GiRecorder, ReportsRegenTypeAndAbort)
{
  EXPECT_EQ(wd.regenType(), kOdGiStandardDisplay);
  EXPECT_FALSE(wd.regenAbort());
  recorder.setRegenAbort(true);
  EXPECT_TRUE(wd.regenAbort());
  const OdGiWorldDrawRecorder forRender(kOdGiRenderCommand);
  EXPECT_EQ(forRender.regenType(), kOdGiRenderCommand);
}

TEST(GiRasterImage, StoresPixelsAsBlueGreenRedAlpha)
{
  OdGiRasterImage image(3, 2);
  EXPECT_EQ(image.pixelWidth(), 3u);
  EXPECT_EQ(image.pixelHeight(), 2u);
  EXPECT_EQ(image.pixel(2, 1), 0u);
  image.setPixel(2, 1, 0x10, 0x20, 0x30, 0x40);
  const OdUInt8* bytes = image.bgraPixels() + (1 * 3 + 2) * 4;
  EXPECT_EQ(bytes[0], 0x30);
  EXPECT_EQ(bytes[1], 0x20);
  EXPECT_EQ(bytes[2], 0x10);
  EXPECT_EQ(bytes[3], 0x40);
  EXPECT_EQ(image.pixel(2, 1), 0x40102030u);
  EXPECT_TRUE(OdGiRasterImage(0, 5).isEmpty());
  EXPECT_EQ(OdGiRasterImage(0, 5).pixelHeight(), 0u);
}
