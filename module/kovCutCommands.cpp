#include "module/kovCutCommands.h"

#include "module/kovScriptInput.h"

#include "production/kovAnimationProductionModel.h"
#include "production/kovCameraCutChecks.h"
#include "production/kovEncodingSettingsWidget.h"
#include "production/kovFrameSchedule.h"
#include "production/kovProductionLabels.h"

#include "Db/OdDbDatabase.h"
#include "Db/OdDbViewTable.h"

#include <QRegularExpression>

namespace {

enum Setting { Name, Camera, Start, End, FrameRate, Size, Format, Encoding, Quality, Samples, PathTracing, View };

QString tr(const char* text)
{
  return QCoreApplication::translate("kovCutCommands", text);
}

void check(const QString& problem)
{
  if (!problem.isEmpty())
    kovScriptInput::fail(problem);
}

// One of the choice's keywords (its labels without blanks); its index.
int choice(kovScriptInput& in, const QString& what, const QStringList& labels)
{
  QStringList keywords;
  for (const QString& label : labels)
    keywords << QString(label).remove(QLatin1Char(' '));
  return in.io()->getKeyword(odFromQString(QStringLiteral("%1 [%2]:").arg(what, keywords.join(QLatin1Char('/')))),
                             odFromQString(keywords.join(QLatin1Char(' '))));
}

template <class Choice>
QStringList labels(QString (*label)(Choice), int count)
{
  QStringList all;
  for (int i = 0; i < count; ++i)
    all << label(static_cast<Choice>(i));
  return all;
}

kovAnimationTrackPtr cameraTrack(kovScriptInput& in, const kovDbAnimation& animation)
{
  const kovAnimationTrackPtr track = animation.constTracks().at(static_cast<size_t>(in.track(animation)));
  if (!kovAnimationProductionModel::isCameraTrack(track.get()))
    kovScriptInput::fail(tr("A camera cut films a camera track; \"%1\" is a %2 track.")
                             .arg(track->trackName(), track->trackTypeIdentifier()));
  return track;
}

void setEncoding(kovCameraCut& cut, kovEncoding encoding)
{
  const QList<kovEncoding> offered = kovEncodingSettingsWidget::encodingsFor(cut.outputFormat);
  if (!offered.contains(encoding)) {
    QStringList names;
    for (kovEncoding each : offered)
      names << kovProductionLabels::encoding(each);
    kovScriptInput::fail(offered.isEmpty()
                             ? tr("A %1 cut has no encoding.").arg(kovProductionLabels::outputFormat(cut.outputFormat))
                             : tr("A %1 clip is encoded as %2.")
                                   .arg(kovProductionLabels::outputFormat(cut.outputFormat),
                                        names.join(QStringLiteral(", "))));
  }
  cut.encoding = encoding;
}

// A clip keeps its encoding when its new format offers it, else takes the
// format's first.
void setFormat(kovCameraCut& cut, kovOutputFormat format)
{
  cut.outputFormat = format;
  cut.stillImage = kovIsStillImageFormat(format);
  const QList<kovEncoding> offered = kovEncodingSettingsWidget::encodingsFor(format);
  if (!offered.isEmpty() && !offered.contains(cut.encoding))
    cut.encoding = offered.first();
}

OdDbObjectId namedView(OdDbDatabase* db, const QString& name)
{
  OdDbObjectPtr object = db->getViewTableId().openObject(OdDb::kForRead);
  const OdDbViewTablePtr views = OdDbViewTable::cast(object.get());
  const OdDbObjectId id = views.isNull() ? OdDbObjectId() : views->getAt(odFromQString(name));
  if (id.isNull())
    kovScriptInput::fail(tr("The drawing has no view named \"%1\" (namedview Save keeps one).").arg(name));
  return id;
}

} // namespace

void kovCutCommands::addCut(OdEdCommandContext* pCmdCtx)
{
  kovScriptInput in(pCmdCtx);
  kovDbAnimationPtr animation = in.animation(OdDb::kForWrite);
  kovCameraCut cut;
  cut.track = cameraTrack(in, *animation);
  cut.startMs = in.milliseconds(tr("Start in milliseconds:"));
  cut.endMs = in.milliseconds(tr("End in milliseconds:"));
  check(kovCameraCutChecks::timesProblem(cut.startMs, cut.endMs));
  const QString name = kovAnimationProductionModel::freeCutName(animation->sceneCuts());
  cut.name = in.lineEnded() ? name : in.text(tr("Cut name <%1>:").arg(name), name);
  animation->sceneCuts().append(cut);
  in.io()->putString(odFromQString(tr("Added camera cut %1 \"%2\": %3 from %4 to %5 ms.")
                                       .arg(animation->sceneCuts().size())
                                       .arg(cut.name, cut.track->trackName())
                                       .arg(cut.startMs)
                                       .arg(cut.endMs)));
}

void kovCutCommands::setCut(OdEdCommandContext* pCmdCtx)
{
  kovScriptInput in(pCmdCtx);
  kovDbAnimationPtr animation = in.animation(OdDb::kForWrite);
  const int index = in.cut(*animation);
  kovCameraCut cut = animation->sceneCuts().at(index);
  const Setting setting = static_cast<Setting>(in.io()->getKeyword(
      OdString(L"Setting [Name/Camera/Start/End/FrameRate/Size/Format/Encoding/Quality/Samples/PathTracing/View]:"),
      OdString(L"Name Camera Start End FrameRate Size Format Encoding Quality Samples PathTracing View")));
  switch (setting) {
  case Name:
    cut.name = in.text(tr("Name:"));
    break;
  case Camera:
    cut.track = cameraTrack(in, *animation);
    break;
  case Start:
  case End:
    (setting == Start ? cut.startMs : cut.endMs) = in.milliseconds(tr("Time in milliseconds:"));
    check(kovCameraCutChecks::timesProblem(cut.startMs, cut.endMs));
    break;
  case FrameRate:
    cut.frameRate = in.io()->getReal(OdString(L"Frames per second:"), OdEd::kInpThrowEmpty);
    check(kovCameraCutChecks::frameRateProblem(cut.frameRate));
    if (kovFrameSchedule::stepMs(cut.frameRate) < 1)
      kovScriptInput::fail(tr("The frame rate must be at most 1000 frames per second."));
    break;
  case Size: {
    static const QRegularExpression pattern(QStringLiteral("^(\\d{1,9})\\s*[xX]\\s*(\\d{1,9})$"));
    const QRegularExpressionMatch size = pattern.match(in.text(tr("Size as WIDTHxHEIGHT:")));
    if (!size.hasMatch())
      kovScriptInput::fail(tr("Give the size as WIDTHxHEIGHT, such as 1280x720."));
    cut.imageWidth = size.captured(1).toInt();
    cut.imageHeight = size.captured(2).toInt();
    check(kovCameraCutChecks::frameSizeProblem(cut.imageWidth, cut.imageHeight));
    break;
  }
  case Format:
    setFormat(cut, static_cast<kovOutputFormat>(
                       choice(in, tr("Output format"), labels(&kovProductionLabels::outputFormat, 10))));
    break;
  case Encoding:
    setEncoding(cut, static_cast<kovEncoding>(choice(in, tr("Encoding"), labels(&kovProductionLabels::encoding, 7))));
    break;
  case Quality:
    cut.quality = static_cast<kovQuality>(choice(in, tr("Quality"), labels(&kovProductionLabels::quality, 4)));
    break;
  case Samples:
    cut.maxIterations = in.io()->getInt(OdString(L"Samples per pixel:"), OdEd::kInpThrowEmpty);
    if (cut.maxIterations < 1 || cut.maxIterations > kovEncodingSettingsWidget::kMaxSamples)
      kovScriptInput::fail(tr("The samples must be 1 to %1.").arg(kovEncodingSettingsWidget::kMaxSamples));
    break;
  case PathTracing:
    cut.pathTracing = in.io()->getKeyword(OdString(L"Path tracing [On/Off]:"), OdString(L"On Off")) == 0;
    break;
  case View:
    cut.viewId = namedView(in.database(), in.text(tr("Named view:")));
    break;
  }
  animation->sceneCuts()[index] = cut;
  in.io()->putString(odFromQString(tr("Camera cut %1 \"%2\": %3, %4 to %5 ms, %6.")
                                       .arg(index + 1)
                                       .arg(cut.name, cut.track->trackName())
                                       .arg(cut.startMs)
                                       .arg(cut.endMs)
                                       .arg(kovAnimationProductionModel::settingsSummary(cut))));
}
