#include "module/kovAnimationListing.h"

#include "module/kovScriptInput.h"

#include "db/kovDbAnimation.h"
#include "editor/kovKeyframeToolTip.h"
#include "production/kovAnimationProductionModel.h"

namespace {

QString tr(const char* text)
{
  return QCoreApplication::translate("kovAnimationListing", text);
}

QString itemTitle(const kovAnimationItem& item)
{
  if (item.animationType() != kovAnimationItem::CustomParameter)
    return kovAnimationItem::animationType2String(item.animationType());
  return QStringLiteral("%1 (%2)").arg(item.customParameterName(), kovAnimationItem::paramType2String(item.paramsType()));
}

} // namespace

QStringList kovAnimationListing::describe(const kovDbAnimation& animation)
{
  QStringList lines;
  const QList<kovCameraCut>& cuts = animation.sceneCuts();
  lines << tr("Animation \"%1\": %2 tracks, %3 camera cuts, %4 s")
               .arg(animation.animationName())
               .arg(animation.constTracks().size())
               .arg(cuts.size())
               .arg(animation.totalDurationMs() / 1000.0);
  int number = 0;
  for (const kovAnimationTrackPtr& track : animation.constTracks()) {
    ++number;
    if (track.isNull())
      continue;
    lines << tr("Track %1 \"%2\" (%3), from %4 ms")
                 .arg(number)
                 .arg(track->trackName(), track->trackTypeIdentifier())
                 .arg(track->startMillisecond());
    for (int i = 0; i < track->numElements(); ++i) {
      const kovAnimationItem& item = track->elementAt(i);
      lines << tr("  %1 %2: %3 keyframes").arg(i + 1).arg(itemTitle(item)).arg(item.values().size());
      for (auto key = item.values().cbegin(); key != item.values().cend(); ++key)
        lines << tr("    %1 ms:%2")
                     .arg(track->startMillisecond() + key.key())
                     .arg(kovKeyframeToolTip::text(item, key.value()));
    }
  }
  for (int i = 0; i < cuts.size(); ++i) {
    const kovCameraCut& cut = cuts.at(i);
    lines << tr("Camera cut %1 \"%2\": %3, %4 to %5 ms, %6")
                 .arg(i + 1)
                 .arg(cut.name, cut.track.isNull() ? QString() : cut.track->trackName())
                 .arg(cut.startMs)
                 .arg(cut.endMs)
                 .arg(kovAnimationProductionModel::settingsSummary(cut));
  }
  return lines;
}

void kovAnimationListing::list(OdEdCommandContext* pCmdCtx)
{
  kovScriptInput in(pCmdCtx);
  for (const QString& line : describe(*in.animation()))
    in.io()->putString(odFromQString(line));
}
