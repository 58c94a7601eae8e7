#include "import/kovXcafImporter.h"

#include "Rx/OdError.h"

#include <BRepBndLib.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <Bnd_Box.hxx>
#include <IGESCAFControl_Reader.hxx>
#include <RWGltf_CafReader.hxx>
#include <RWMesh_FaceIterator.hxx>
#include <RWObj_CafReader.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopoDS_Shape.hxx>
#include <UnitsMethods.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XCAFDoc_VisMaterial.hxx>
#include <XCAFDoc_VisMaterialTool.hxx>
#include <XCAFPrs_Style.hxx>

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <tuple>

using kov::polymesh::Mesh;

namespace {

// Chords stay within this share of a part's size; turns within this angle.
const double kRelativeDeflection = 0.002;
const double kAngularDeflection = 0.35;

OdString labelName(const TDF_Label& label)
{
  Handle(TDataStd_Name) name;
  if (label.IsNull() || !label.FindAttribute(TDataStd_Name::GetID(), name))
    return OdString();
  const TCollection_ExtendedString& text = name->Get();
  return odFromQString(QString(reinterpret_cast<const QChar*>(text.ToExtString()), text.Length()));
}

OdGeMatrix3d matrixOf(const TopLoc_Location& location)
{
  const gp_Trsf trsf = location.Transformation();
  OdGeMatrix3d m;
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 4; ++c)
      m.entry[r][c] = trsf.Value(r + 1, c + 1);
  return m;
}

OdCmEntityColor entityColor(const Quantity_ColorRGBA& color)
{
  Standard_Real r = 0, g = 0, b = 0;
  color.GetRGB().Values(r, g, b, Quantity_TOC_sRGB);
  const auto byte = [](double v) { return static_cast<OdUInt8>(std::lround(std::clamp(v, 0.0, 1.0) * 255.0)); };
  return OdCmEntityColor(byte(r), byte(g), byte(b));
}

// A document for one read, closed again however the read ends.
class Document {
public:
  Document()
  {
    XCAFApp_Application::GetApplication()->NewDocument(TCollection_ExtendedString("MDTV-XCAF"), m_doc);
  }
  ~Document() { XCAFApp_Application::GetApplication()->Close(m_doc); }
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;
  const Handle(TDocStd_Document)& get() const { return m_doc; }

private:
  Handle(TDocStd_Document) m_doc;
};

class TreeReader {
public:
  TreeReader(kovImportedScene& scene, const Handle(XCAFDoc_ColorTool)& colors)
    : m_scene(scene)
    , m_colors(colors)
  {
  }

  void visit(const TDF_Label& label, std::size_t parent, const XCAFPrs_Style& inherited)
  {
    TDF_Label shape = label;
    if (XCAFDoc_ShapeTool::IsReference(label))
      XCAFDoc_ShapeTool::GetReferredShape(label, shape);
    OdString name = labelName(label);
    if (name.isEmpty())
      name = labelName(shape);
    const XCAFPrs_Style style = styleOf(shape, styleOf(label, inherited));
    const std::size_t node = m_scene.addNode(parent, name, matrixOf(XCAFDoc_ShapeTool::GetLocation(label)));
    if (XCAFDoc_ShapeTool::IsAssembly(shape)) {
      TDF_LabelSequence components;
      XCAFDoc_ShapeTool::GetComponents(shape, components);
      for (const TDF_Label& component : components)
        visit(component, node, style);
      return;
    }
    m_scene.addPart(node, name, meshOf(shape, style));
  }

private:
  XCAFPrs_Style styleOf(const TDF_Label& label, const XCAFPrs_Style& inherited) const
  {
    XCAFPrs_Style style = inherited;
    Quantity_ColorRGBA color;
    if (m_colors->GetColor(label, XCAFDoc_ColorSurf, color) || m_colors->GetColor(label, XCAFDoc_ColorGen, color))
      style.SetColorSurf(color);
    // A material outranks a plain colour when the face iterator picks the
    // face's look.
    const Handle(XCAFDoc_VisMaterial) material = XCAFDoc_DocumentTool::VisMaterialTool(label)->GetShapeMaterial(label);
    if (!material.IsNull())
      style.SetMaterial(material);
    return style;
  }

  // The part's faces under its own location, one surface per colour and
  // material (named after the material, or the part when it has none). Faces
  // without a colour take the entity's, through a by-block surface that is
  // dropped again when no face has a colour.
  Mesh meshOf(const TDF_Label& label, const XCAFPrs_Style& style) const
  {
    Mesh mesh;
    std::map<std::tuple<bool, int, int, int, std::wstring>, OdInt32> surfaces;
    for (RWMesh_FaceIterator face(label, TopLoc_Location(), true, style); face.More(); face.Next()) {
      if (face.IsEmptyMesh())
        continue;
      OdCmEntityColor color(OdCmEntityColor::kByBlock);
      OdString material;
      if (face.HasFaceColor()) {
        color = entityColor(face.FaceColor());
        const Handle(XCAFDoc_VisMaterial)& visMaterial = face.FaceStyle().Material();
        if (!visMaterial.IsNull() && !visMaterial->RawName().IsNull())
          material = odFromQString(QString::fromUtf8(visMaterial->RawName()->ToCString()));
      }
      const auto key = std::make_tuple(face.HasFaceColor(), int(color.red()), int(color.green()), int(color.blue()),
                                       std::wstring(material.c_str()));
      auto found = surfaces.find(key);
      if (found == surfaces.end()) {
        const OdString surfaceName = material.isEmpty() ? labelName(label) : material;
        mesh.surfaces.emplace_back(surfaceName, color, material);
        found = surfaces.emplace(key, static_cast<OdInt32>(mesh.surfaces.size() - 1)).first;
      }
      const OdInt32 base = static_cast<OdInt32>(mesh.vertices.size());
      const bool normals = face.Triangulation()->HasNormals();
      for (Standard_Integer i = 1; i <= face.NbNodes(); ++i) {
        const gp_Pnt p = face.NodeTransformed(i);
        OdGeVector3d normal;
        if (normals) {
          const gp_Dir n = face.NormalTransformed(i);
          normal.set(n.X(), n.Y(), n.Z());
        }
        mesh.vertices.emplace_back(OdGePoint3d(p.X(), p.Y(), p.Z()), normal);
      }
      for (Standard_Integer t = face.ElemLower(); t <= face.ElemUpper(); ++t) {
        Standard_Integer a = 0, b = 0, c = 0;
        face.TriangleOriented(t).Get(a, b, c);
        if (a == b || b == c || a == c)
          continue;
        mesh.faces.emplace_back(std::vector<OdInt32> { base + a - 1, base + b - 1, base + c - 1 }, found->second);
      }
    }
    if (mesh.surfaces.size() == 1 && mesh.surfaces.front().color.isByBlock())
      mesh.surfaces.clear();
    return mesh;
  }

  kovImportedScene& m_scene;
  Handle(XCAFDoc_ColorTool) m_colors;
};

void meshExactShapes(const TDF_LabelSequence& roots)
{
  for (const TDF_Label& root : roots) {
    const TopoDS_Shape shape = XCAFDoc_ShapeTool::GetShape(root);
    Bnd_Box box;
    BRepBndLib::Add(shape, box);
    if (box.IsVoid())
      continue;
    const double size = std::sqrt(box.SquareExtent());
    BRepMesh_IncrementalMesh(shape, size * kRelativeDeflection, false, kAngularDeflection, true);
  }
}

} // namespace

kovImportedScene kovXcafImporter::read(const QString& path, Format format)
{
  const QString fileName = QFileInfo(path).fileName();
  const QByteArray local = QFile::encodeName(path);
  const auto refuse = [&](const QString& why) {
    throw OdError(eBadDwgFile, odFromQString(fileName + QStringLiteral(" can't be read: ") + why));
  };
  Document doc;
  Handle(TDocStd_Document) target = doc.get();
  // Metres per length unit of the shapes in the document once it is read.
  double unit = 1.0;
  if (format == Format::Step || format == Format::Iges) {
    bool read = false;
    if (format == Format::Step) {
      STEPCAFControl_Reader reader;
      reader.SetColorMode(true);
      reader.SetNameMode(true);
      read = reader.ReadFile(local.constData()) == IFSelect_RetDone && reader.Transfer(target);
    } else {
      IGESCAFControl_Reader reader;
      reader.SetColorMode(true);
      reader.SetNameMode(true);
      read = reader.ReadFile(local.constData()) == IFSelect_RetDone && reader.Transfer(target);
    }
    if (!read)
      refuse(format == Format::Step ? QStringLiteral("it is not a STEP file or it is damaged")
                                    : QStringLiteral("it is not an IGES file or it is damaged"));
    if (!XCAFDoc_DocumentTool::GetLengthUnit(doc.get(), unit))
      unit = UnitsMethods::GetCasCadeLengthUnit(UnitsMethods_LengthUnit_Meter);
  } else {
    std::unique_ptr<RWMesh_CafReader> reader;
    if (format == Format::Gltf) {
      auto gltf = std::make_unique<RWGltf_CafReader>();
      gltf->SetParallel(true);
      reader = std::move(gltf);
    } else {
      reader = std::make_unique<RWObj_CafReader>();
      // OBJ has no unit: lengths are taken as drawing units.
      reader->SetFileLengthUnit(1.0);
    }
    reader->SetSystemLengthUnit(1.0);
    reader->SetDocument(doc.get());
    if (!reader->Perform(TCollection_AsciiString(local.constData()), Message_ProgressRange()))
      refuse(QStringLiteral("the file is damaged or incomplete"));
  }

  const Handle(XCAFDoc_ShapeTool) shapes = XCAFDoc_DocumentTool::ShapeTool(doc.get()->Main());
  TDF_LabelSequence roots;
  shapes->GetFreeShapes(roots);
  if (format == Format::Step || format == Format::Iges)
    meshExactShapes(roots);
  kovImportedScene scene;
  TreeReader tree(scene, XCAFDoc_DocumentTool::ColorTool(doc.get()->Main()));
  for (const TDF_Label& root : roots)
    tree.visit(root, 0, XCAFPrs_Style());
  scene.scaleLengths(unit);
  return scene;
}
