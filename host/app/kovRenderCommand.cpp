#include "host/app/kovRenderCommand.h"

#include "host/app/kovHostApplication.h"
#include "host/app/kovHostViewSystem.h"
#include "host/app/kovNamedViews.h"

#include "host/api/kovHostService.h"

#include "Ed/OdDbScriptUserIO.h"
#include "Ed/OdEdCommandContext.h"
#include "Ed/OdEdUserIO.h"

#include <QDir>
#include <QFileInfo>

#include <cmath>

namespace {

const QSize kDefaultSize(1280, 720);
const int kDefaultSamples = 64;

kovHostViewSystem* hostViews()
{
  // The host publishes its own view system under the id.
  return static_cast<kovHostViewSystem*>(kovHostService<IkovViewSystem>());
}

// A script line that has given all its words leaves the optional values
// that follow at their defaults; a person is asked.
bool lineEnded(OdEdUserIO* io)
{
  OdSmartPtr<OdDbScriptUserIO> script = OdDbScriptUserIO::cast(io);
  return !script.isNull() && script->remainingWords().isEmpty();
}

int pixels(OdEdUserIO* io, const OdString& prompt, int defaultValue)
{
  for (;;) {
    const int value = io->getInt(prompt, OdEd::kInpDefault, defaultValue);
    if (value >= 1 && value <= kovRenderView::kMaxSize)
      return value;
    OdString message;
    message.format(L"The size must be 1 to %d pixels.", kovRenderView::kMaxSize);
    io->putString(message);
  }
}

void render(OdDbDatabase* db, OdEdUserIO* io, kovHostViewSystem* views)
{
  const QString path = odToQString(io->getString(OdString(L"File to write (.png or .jpg):"))).trimmed();
  const QString suffix = QFileInfo(path).suffix().toLower();
  if (path.isEmpty() || (suffix != QLatin1String("png") && suffix != QLatin1String("jpg")
                         && suffix != QLatin1String("jpeg")))
    throw OdError(eInvalidInput, OdString(L"Give a file name ending in .png or .jpg"));
  QSize size = kDefaultSize;
  if (!lineEnded(io)) {
    size.setWidth(pixels(io, OdString(L"Width in pixels <1280>:"), kDefaultSize.width()));
    size.setHeight(pixels(io, OdString(L"Height in pixels <720>:"), kDefaultSize.height()));
  }
  const int viewport = views->activeViewport(db);
  int samples = 1;
  if (views->visualStyle(viewport) == kovRenderView::VisualStyle::Rendered) {
    samples = kDefaultSamples;
    if (!lineEnded(io)) {
      for (;;) {
        samples = io->getInt(OdString(L"Samples per pixel <64>:"), OdEd::kInpDefault, kDefaultSamples);
        if (samples >= 1 && samples <= 100000)
          break;
        io->putString(OdString(L"The samples must be 1 to 100000."));
      }
    }
  }
  QString error;
  const QImage image = views->render(db, viewport, size, samples, error);
  if (image.isNull())
    throw OdError(eNotApplicable, odFromQString(error));
  const QString absolute = QFileInfo(path).absoluteFilePath();
  QDir().mkpath(QFileInfo(absolute).absolutePath());
  if (!image.save(absolute))
    throw OdError(eFileAccessErr, odFromQString(QStringLiteral("Cannot write the picture %1").arg(absolute)));
  io->putString(odFromQString(QStringLiteral("Rendered %1 x %2 to %3").arg(size.width()).arg(size.height()).arg(absolute)));
}

void view(OdDbDatabase* db, OdEdUserIO* io, kovHostViewSystem* views)
{
  const int viewport = views->activeViewport(db);
  kovViewCamera camera = views->viewCamera(viewport);
  camera.eye = io->getPoint(OdString(L"Eye point:"));
  for (;;) {
    camera.target = io->getPoint(OdString(L"Target point:"));
    if (!camera.target.isEqualTo(camera.eye))
      break;
    io->putString(OdString(L"The target must differ from the eye."));
  }
  while (!lineEnded(io)) {
    const double fov = io->getReal(OdString(L"Field of view in degrees <60>:"), OdEd::kInpDefault, 60.0);
    if (std::isfinite(fov) && fov >= 1.0 && fov <= 170.0) {
      camera.fieldOfView = fov;
      break;
    }
    io->putString(OdString(L"The field of view must be 1 to 170 degrees."));
  }
  views->setViewCamera(viewport, camera);
}

void visualStyle(OdDbDatabase* db, OdEdUserIO* io, kovHostViewSystem* views)
{
  const int choice = io->getKeyword(OdString(L"Visual style [Wireframe/Shaded/Edges/Rendered]:"),
                                    OdString(L"Wireframe Shaded Edges Rendered"));
  const kovRenderView::VisualStyle styles[] = { kovRenderView::VisualStyle::Wireframe, kovRenderView::VisualStyle::Shaded,
                                           kovRenderView::VisualStyle::ShadedWithEdges,
                                           kovRenderView::VisualStyle::Rendered };
  views->setVisualStyle(views->activeViewport(db), styles[choice]);
}

void sun(OdEdUserIO* io, kovHostViewSystem* views)
{
  const double azimuth = io->getReal(OdString(L"Sun azimuth in degrees from north:"));
  double elevation = 0.0;
  for (;;) {
    elevation = io->getReal(OdString(L"Sun elevation in degrees:"));
    if (std::isfinite(elevation) && elevation >= -90.0 && elevation <= 90.0)
      break;
    io->putString(OdString(L"The elevation must be -90 to 90 degrees."));
  }
  QString sky = QStringLiteral("Clear");
  if (!lineEnded(io))
    sky = odToQString(io->getString(OdString(L"Sky <Clear>:"), OdEd::kInpDefault, OdString(L"Clear")));
  if (!std::isfinite(azimuth))
    throw OdError(eInvalidInput, OdString(L"The azimuth must be a number"));
  views->setLighting(kovSkyModel::lighting(kovSkyModel::directionToSun(azimuth, elevation),
                                           kovSkyModel::presetNamed(sky)));
}

// Saves the active view under a name, or shows a saved one in it.
void namedView(OdDbDatabase* db, OdEdUserIO* io, kovHostViewSystem* views)
{
  const int choice = io->getKeyword(OdString(L"Named view [Save/Restore]:"), OdString(L"Save Restore"));
  const OdString name = io->getString(OdString(L"View name:"), OdEd::kInpThrowEmpty);
  const int viewport = views->activeViewport(db);
  if (choice == 0) {
    const OdResult result = kovNamedViews::store(db, name, views->viewCamera(viewport));
    if (result != eOk)
      throw OdError(result, OdString(L"The view can't be saved as \"") + name + L"\": give another name");
    io->putString(OdString(L"Saved the view \"") + name + L"\".");
    return;
  }
  kovViewCamera camera;
  if (kovNamedViews::find(db, name, views->viewCamera(viewport), camera) != eOk) {
    const QStringList names = kovNamedViews::names(db);
    throw OdError(eKeyNotFound, OdString(L"No view is named \"") + name + L"\"; "
                                  + (names.isEmpty() ? OdString(L"the drawing has no named views")
                                                     : L"the drawing's views are: " + odFromQString(names.join(QStringLiteral(", ")))));
  }
  views->setViewCamera(viewport, camera);
}

} // namespace

void kovRenderCommand::execute(OdEdCommandContext* pCmdCtx)
{
  OdEdUserIO* io = pCmdCtx->userIO();
  kovHostViewSystem* views = hostViews();
  if (!views)
    throw OdError(eNotApplicable, OdString(L"This command needs the host's views"));
  OdDbDatabase* db = openDrawing();
  if (m_name == L"render")
    render(db, io, views);
  else if (m_name == L"view")
    view(db, io, views);
  else if (m_name == L"visualstyle")
    visualStyle(db, io, views);
  else if (m_name == L"namedview")
    namedView(db, io, views);
  else
    sun(io, views);
}
