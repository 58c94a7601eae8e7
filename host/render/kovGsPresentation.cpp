#include "host/render/kovGsPresentation.h"

#include "host/render/kovOcctConvert.h"

#include <Graphic3d_ArrayOfSegments.hxx>
#include <Graphic3d_ArrayOfTriangles.hxx>
#include <Graphic3d_AspectFillArea3d.hxx>
#include <Graphic3d_AspectLine3d.hxx>
#include <Graphic3d_AspectText3d.hxx>
#include <Graphic3d_Group.hxx>
#include <Graphic3d_Text.hxx>
#include <Graphic3d_Texture2Dmanual.hxx>
#include <Image_PixMap.hxx>
#include <Prs3d_Presentation.hxx>
#include <Select3D_SensitivePrimitiveArray.hxx>
#include <Select3D_SensitiveSegment.hxx>
#include <SelectMgr_EntityOwner.hxx>
#include <SelectMgr_Selection.hxx>

#include <QString>

#include <cmath>
#include <map>

namespace {

constexpr int kCircleSegments = 64;
// The engine keeps coordinates as floats: past this a point is lost to
// rounding (and overflows past 3e38), and one such point in the box around
// the scene would fit the depth range to it and lose everything else.
constexpr double kFarthest = 1e12;

bool usable(double v)
{
  return std::isfinite(v) && std::fabs(v) < kFarthest;
}

bool usable(const OdGePoint3d& p)
{
  return usable(p.x) && usable(p.y) && usable(p.z);
}
const Quantity_Color kEdgeColor(0.08, 0.08, 0.1, Quantity_TOC_sRGB);

// The outer loop of each face of a shell (holes are skipped), as vertex
// indices; faces that name missing vertices are dropped by the recorder.
template <class Visit>
void forEachFace(const OdGiPrimitiveRecord& shell, Visit visit)
{
  const OdIntArray& list = shell.faceList;
  std::vector<OdInt32> loop;
  for (size_t i = 0; i < list.size();) {
    const OdInt32 count = list[i++];
    const size_t n = static_cast<size_t>(std::abs(count));
    if (count > 0) {
      loop.assign(list.begin() + static_cast<std::ptrdiff_t>(i), list.begin() + static_cast<std::ptrdiff_t>(i + n));
      visit(loop);
    }
    i += n;
  }
}

// Newell's normal: sound for any simple loop, planar or nearly so.
gp_XYZ loopNormal(const OdGePoint3dArray& points, const std::vector<OdInt32>& loop)
{
  gp_XYZ n(0.0, 0.0, 0.0);
  for (size_t i = 0; i < loop.size(); ++i) {
    const OdGePoint3d& a = points[static_cast<size_t>(loop[i])];
    const OdGePoint3d& b = points[static_cast<size_t>(loop[(i + 1) % loop.size()])];
    n += gp_XYZ((a.y - b.y) * (a.z + b.z), (a.z - b.z) * (a.x + b.x), (a.x - b.x) * (a.y + b.y));
  }
  return n;
}

struct Corner {
  gp_Pnt point;
  gp_Dir normal;
};

// Triangles by colour, so that each colour is one primitive array.
typedef std::map<OdUInt32, std::vector<Corner>> TrianglesByColor;

void addLoop(TrianglesByColor& out, OdUInt32 color, const OdGePoint3dArray& points, const std::vector<OdInt32>& loop)
{
  if (loop.size() < 3)
    return;
  double longest = 0.0;
  for (size_t i = 0; i < loop.size(); ++i) {
    const OdGePoint3d& p = points[static_cast<size_t>(loop[i])];
    if (!usable(p))
      return;
    longest = std::max(longest, p.distanceTo(points[static_cast<size_t>(loop[(i + 1) % loop.size()])]));
  }
  // No area against the face's size: a line or a point, whose normal is noise.
  const gp_XYZ n = loopNormal(points, loop);
  if (!(n.Modulus() > 1e-12 * longest * longest))
    return;
  const gp_Dir normal(n);
  std::vector<Corner>& corners = out[color];
  for (size_t i = 1; i + 1 < loop.size(); ++i) {
    for (size_t k : { size_t(0), i, i + 1 })
      corners.push_back({ kovOcct::point(points[static_cast<size_t>(loop[k])]), normal });
  }
}

TrianglesByColor trianglesOf(const std::vector<OdGiPrimitiveRecord>& records)
{
  TrianglesByColor out;
  for (const OdGiPrimitiveRecord& record : records) {
    const OdUInt32 color = kovOcct::packedColor(record.color);
    if (record.kind == OdGiPrimitiveRecord::kShell) {
      forEachFace(record, [&](const std::vector<OdInt32>& loop) { addLoop(out, color, record.points, loop); });
    } else if (record.kind == OdGiPrimitiveRecord::kPolygon) {
      std::vector<OdInt32> loop(record.points.size());
      for (size_t i = 0; i < loop.size(); ++i)
        loop[i] = static_cast<OdInt32>(i);
      addLoop(out, color, record.points, loop);
    }
  }
  return out;
}

Handle(Graphic3d_AspectFillArea3d) surfaceAspect(const Quantity_Color& color)
{
  Graphic3d_MaterialAspect material(Graphic3d_NameOfMaterial_Plastified);
  material.SetColor(color);
  material.SetSpecularColor(Quantity_Color(0.08, 0.08, 0.08, Quantity_TOC_RGB));
  // The path tracer reads the BSDF, not the colour.
  material.SetBSDF(Graphic3d_BSDF::CreateDiffuse(Graphic3d_Vec3(static_cast<float>(color.Red()),
                                                                static_cast<float>(color.Green()),
                                                                static_cast<float>(color.Blue()))));
  Handle(Graphic3d_AspectFillArea3d) aspect = new Graphic3d_AspectFillArea3d();
  aspect->SetInteriorStyle(Aspect_IS_SOLID);
  aspect->SetInteriorColor(color);
  aspect->SetFrontMaterial(material);
  aspect->SetBackMaterial(material);
  aspect->SetDistinguishOff();
  return aspect;
}

// The line segments of lines and circles, with one colour per vertex.
struct Segment {
  gp_Pnt a;
  gp_Pnt b;
  Quantity_Color color;
};

std::vector<Segment> segmentsOf(const std::vector<OdGiPrimitiveRecord>& records)
{
  std::vector<Segment> out;
  for (const OdGiPrimitiveRecord& record : records) {
    const Quantity_Color color = kovOcct::color(record.color);
    if (record.kind == OdGiPrimitiveRecord::kPolyline) {
      // A point that cannot be drawn breaks the line; the rest is drawn.
      for (size_t i = 1; i < record.points.size(); ++i) {
        if (usable(record.points[i - 1]) && usable(record.points[i]))
          out.push_back({ kovOcct::point(record.points[i - 1]), kovOcct::point(record.points[i]), color });
      }
    } else if (record.kind == OdGiPrimitiveRecord::kCircle && !record.points.isEmpty()
               && usable(record.points.first()) && usable(record.radius) && record.radius > 0.0
               && std::isfinite(record.normal.length())) {
      const gp_Pnt c = kovOcct::point(record.points.first());
      const gp_Dir n = record.normal.isZeroLength() ? gp_Dir(0, 0, 1) : kovOcct::direction(record.normal);
      const gp_Ax2 axes(c, n);
      auto at = [&](int i) {
        const double t = 2.0 * M_PI * i / kCircleSegments;
        return c.Translated(gp_Vec(axes.XDirection()) * (record.radius * std::cos(t))
                            + gp_Vec(axes.YDirection()) * (record.radius * std::sin(t)));
      };
      for (int i = 0; i < kCircleSegments; ++i)
        out.push_back({ at(i), at(i + 1), color });
    }
  }
  return out;
}

// The edges of faces, each once, in the colour of its face.
std::vector<Segment> faceEdgesOf(const std::vector<OdGiPrimitiveRecord>& records)
{
  std::vector<Segment> out;
  for (const OdGiPrimitiveRecord& record : records) {
    const bool shell = record.kind == OdGiPrimitiveRecord::kShell;
    if (!shell && record.kind != OdGiPrimitiveRecord::kPolygon)
      continue;
    const Quantity_Color color = kovOcct::color(record.color);
    auto addLoopEdges = [&](const std::vector<OdInt32>& loop) {
      for (size_t i = 0; i < loop.size(); ++i) {
        const size_t a = static_cast<size_t>(loop[i]);
        const size_t b = static_cast<size_t>(loop[(i + 1) % loop.size()]);
        // An edge two faces share is walked both ways: keep one.
        if ((shell && a > b) || !usable(record.points[a]) || !usable(record.points[b]))
          continue;
        out.push_back({ kovOcct::point(record.points[a]), kovOcct::point(record.points[b]), color });
      }
    };
    if (shell) {
      forEachFace(record, addLoopEdges);
    } else {
      std::vector<OdInt32> loop(record.points.size());
      for (size_t i = 0; i < loop.size(); ++i)
        loop[i] = static_cast<OdInt32>(i);
      addLoopEdges(loop);
    }
  }
  return out;
}

Handle(Graphic3d_ArrayOfSegments) segmentArray(const std::vector<Segment>& segments, const Quantity_Color* override)
{
  Handle(Graphic3d_ArrayOfSegments) array = new Graphic3d_ArrayOfSegments(
      static_cast<Standard_Integer>(segments.size() * 2), 0, Graphic3d_ArrayFlags_VertexColor);
  for (const Segment& s : segments) {
    const Quantity_Color& color = override ? *override : s.color;
    array->AddVertex(s.a, color);
    array->AddVertex(s.b, color);
  }
  return array;
}

} // namespace

kovGsPresentation::kovGsPresentation(const OdDbObjectId& id, std::vector<OdGiPrimitiveRecord> records)
  : m_id(id)
  , m_records(std::move(records))
{
  for (const OdGiPrimitiveRecord& record : m_records) {
    for (const OdGePoint3d& p : record.points) {
      if (usable(p))
        m_box.Add(kovOcct::point(p));
    }
    if (record.kind == OdGiPrimitiveRecord::kShell) {
      forEachFace(record, [this](const std::vector<OdInt32>& loop) {
        m_triangleCount += loop.size() >= 3 ? loop.size() - 2 : 0;
      });
    }
  }
  SetDisplayMode(Shaded);
}

Standard_Boolean kovGsPresentation::AcceptDisplayMode(const Standard_Integer theMode) const
{
  return theMode == Shaded || theMode == Wireframe || theMode == ShadedWithEdges;
}

void kovGsPresentation::Compute(const Handle(PrsMgr_PresentationManager)&, const Handle(Prs3d_Presentation)& thePrs,
                                const Standard_Integer theMode)
{
  if (theMode != Wireframe)
    addFaces(thePrs);
  if (theMode != Shaded)
    addEdges(thePrs, theMode == ShadedWithEdges);
  addLines(thePrs);
  addImages(thePrs);
  addTexts(thePrs);
}

void kovGsPresentation::addFaces(const Handle(Prs3d_Presentation)& prs) const
{
  for (const auto& [packed, corners] : trianglesOf(m_records)) {
    Handle(Graphic3d_ArrayOfTriangles) triangles =
        new Graphic3d_ArrayOfTriangles(static_cast<Standard_Integer>(corners.size()), 0,
                                       Graphic3d_ArrayFlags_VertexNormal);
    for (const Corner& corner : corners)
      triangles->AddVertex(corner.point, corner.normal);
    Handle(Graphic3d_Group) group = prs->NewGroup();
    group->SetClosed(false);
    group->SetGroupPrimitivesAspect(surfaceAspect(kovOcct::unpackedColor(packed)));
    group->AddPrimitiveArray(triangles);
  }
}

void kovGsPresentation::addEdges(const Handle(Prs3d_Presentation)& prs, bool dark) const
{
  const std::vector<Segment> edges = faceEdgesOf(m_records);
  if (edges.empty())
    return;
  Handle(Graphic3d_Group) group = prs->NewGroup();
  group->SetGroupPrimitivesAspect(new Graphic3d_AspectLine3d(kEdgeColor, Aspect_TOL_SOLID, 1.0));
  group->AddPrimitiveArray(segmentArray(edges, dark ? &kEdgeColor : nullptr));
}

void kovGsPresentation::addLines(const Handle(Prs3d_Presentation)& prs) const
{
  const std::vector<Segment> lines = segmentsOf(m_records);
  if (lines.empty())
    return;
  Handle(Graphic3d_Group) group = prs->NewGroup();
  group->SetGroupPrimitivesAspect(new Graphic3d_AspectLine3d(Quantity_NOC_WHITE, Aspect_TOL_SOLID, 1.5));
  group->AddPrimitiveArray(segmentArray(lines, nullptr));
}

void kovGsPresentation::addImages(const Handle(Prs3d_Presentation)& prs) const
{
  for (const OdGiPrimitiveRecord& record : m_records) {
    if (record.kind != OdGiPrimitiveRecord::kRasterImage || record.image.isNull() || record.points.isEmpty()
        || record.image->isEmpty() || !usable(record.points.first()))
      continue;
    Handle(Graphic3d_Texture2Dmanual) texture = new Graphic3d_Texture2Dmanual(kovOcct::pixMap(*record.image));
    texture->EnableModulate();
    texture->DisableRepeat();
    Handle(Graphic3d_AspectFillArea3d) aspect = surfaceAspect(Quantity_NOC_WHITE);
    aspect->SetShadingModel(Graphic3d_TypeOfShadingModel_Unlit);
    aspect->SetTextureMap(texture);
    aspect->SetTextureMapOn();
    if (record.transparency)
      aspect->SetAlphaMode(Graphic3d_AlphaMode_Mask, 0.5f);
    const gp_Pnt o = kovOcct::point(record.points.first());
    const gp_Vec u = kovOcct::vector(record.direction);
    const gp_Vec v = kovOcct::vector(record.secondDirection);
    const gp_Vec n = u.Crossed(v);
    if (n.Magnitude() <= 1e-14)
      continue;
    Handle(Graphic3d_ArrayOfTriangles) quad =
        new Graphic3d_ArrayOfTriangles(6, 0, Graphic3d_ArrayFlags_VertexNormal | Graphic3d_ArrayFlags_VertexTexel);
    const gp_Dir normal(n);
    // The image's rows run from the top; v runs from its bottom row up.
    const gp_Pnt corners[4] = { o, o.Translated(u), o.Translated(u + v), o.Translated(v) };
    const gp_Pnt2d texels[4] = { gp_Pnt2d(0, 0), gp_Pnt2d(1, 0), gp_Pnt2d(1, 1), gp_Pnt2d(0, 1) };
    for (int k : { 0, 1, 2, 0, 2, 3 })
      quad->AddVertex(corners[k], normal, texels[k]);
    Handle(Graphic3d_Group) group = prs->NewGroup();
    group->SetGroupPrimitivesAspect(aspect);
    group->AddPrimitiveArray(quad);
  }
}

void kovGsPresentation::addTexts(const Handle(Prs3d_Presentation)& prs) const
{
  for (const OdGiPrimitiveRecord& record : m_records) {
    if (record.kind != OdGiPrimitiveRecord::kText || record.points.isEmpty() || record.text.isEmpty()
        || !usable(record.points.first()))
      continue;
    Handle(Graphic3d_Text) text = new Graphic3d_Text(static_cast<Standard_ShortReal>(record.height));
    text->SetText(TCollection_ExtendedString(odToQString(record.text).toUtf8().constData(), true));
    const gp_Dir direction = kovOcct::direction(record.direction);
    const gp_Dir normal = kovOcct::direction(record.normal);
    text->SetOrientation(gp_Ax2(kovOcct::point(record.points.first()), normal, direction));
    text->SetOwnAnchorPoint(false);
    text->SetHorizontalAlignment(Graphic3d_HTA_LEFT);
    text->SetVerticalAlignment(Graphic3d_VTA_BOTTOM);
    Handle(Graphic3d_Group) group = prs->NewGroup();
    Handle(Graphic3d_AspectText3d) aspect = new Graphic3d_AspectText3d();
    aspect->SetColor(kovOcct::color(record.color));
    group->SetGroupPrimitivesAspect(aspect);
    group->AddText(text);
  }
}

void kovGsPresentation::ComputeSelection(const Handle(SelectMgr_Selection)& theSel, const Standard_Integer)
{
  Handle(SelectMgr_EntityOwner) owner = new SelectMgr_EntityOwner(this);
  for (const auto& entry : trianglesOf(m_records)) {
    const std::vector<Corner>& corners = entry.second;
    Handle(Graphic3d_ArrayOfTriangles) triangles =
        new Graphic3d_ArrayOfTriangles(static_cast<Standard_Integer>(corners.size()), 0, Graphic3d_ArrayFlags_None);
    for (const Corner& corner : corners)
      triangles->AddVertex(corner.point);
    Handle(Select3D_SensitivePrimitiveArray) sensitive = new Select3D_SensitivePrimitiveArray(owner);
    if (sensitive->InitTriangulation(triangles->Attributes(), triangles->Indices(), TopLoc_Location()))
      theSel->Add(sensitive);
  }
  for (const Segment& segment : segmentsOf(m_records))
    theSel->Add(new Select3D_SensitiveSegment(owner, segment.a, segment.b));
  for (const OdGiPrimitiveRecord& record : m_records) {
    if (record.kind != OdGiPrimitiveRecord::kRasterImage || record.points.isEmpty() || !usable(record.points.first()))
      continue;
    const gp_Pnt o = kovOcct::point(record.points.first());
    const gp_Vec u = kovOcct::vector(record.direction);
    const gp_Vec v = kovOcct::vector(record.secondDirection);
    theSel->Add(new Select3D_SensitiveSegment(owner, o, o.Translated(u + v)));
    theSel->Add(new Select3D_SensitiveSegment(owner, o.Translated(u), o.Translated(v)));
  }
}
