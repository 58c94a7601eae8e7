#include "module/kovCameraPathInput.h"

#include "module/kovCameraPathTracker.h"

#include "Ed/OdEdKeyword.h"

#include <QCoreApplication>

#include <cmath>

namespace {

OdString tr(const char* text)
{
  return odFromQString(QCoreApplication::translate("kovCameraPathInput", text));
}

// Picking the previous point again finishes the path.
bool samePoint(const OdGePoint3d& a, const OdGePoint3d& b)
{
  return std::fabs(a.x - b.x) <= 0.001 && std::fabs(a.y - b.y) <= 0.001 && std::fabs(a.z - b.z) <= 0.001;
}

enum class Step { First, Next, Finished };

} // namespace

OdString kovCameraPathInput::nextPointPrompt(int pointCount)
{
  OdString prompt = tr("Specify next point or") + L" [" + tr("Finish") + L"/" + tr("Undo") + L"/" + tr("Reverse");
  if (pointCount > 2)
    prompt += OdString(L"/") + tr("Close");
  return prompt + L"]:";
}

OdString kovCameraPathInput::nextPointKeywords(int pointCount)
{
  OdString keywords = tr("Finish") + L" " + tr("Undo") + L" " + tr("Reverse");
  if (pointCount > 2)
    keywords += OdString(L" ") + tr("Close");
  return keywords;
}

OdDbSplinePtr kovCameraPathInput::run(OdDbUserIO* io)
{
  OdSmartPtr<kovCameraPathTracker> tracker(new kovCameraPathTracker);
  OdGePoint3dArray points;
  Step step = Step::First;
  while (step != Step::Finished) {
    tracker->setPoints(points);
    if (step == Step::First) {
      points.append(io->getPoint(tr("Specify first point:"), OdEd::kGptDefault, nullptr, OdString::kEmpty, tracker));
      step = Step::Next;
      continue;
    }
    const int count = static_cast<int>(points.size());
    try {
      const OdGePoint3d point =
          io->getPoint(nextPointPrompt(count), OdEd::kGptDefault, nullptr, nextPointKeywords(count), tracker);
      if (samePoint(point, points.last()))
        step = Step::Finished;
      else
        points.append(point);
    } catch (const OdEdKeyword& keyword) {
      switch (keyword.keywordIndex()) {
      case 0: // Finish
        step = Step::Finished;
        break;
      case 1: // Undo
        points.removeLast();
        if (points.isEmpty())
          step = Step::First;
        break;
      case 2: // Reverse
        points.reverse();
        break;
      default: // Close
        points.append(points.first());
        step = Step::Finished;
        break;
      }
    }
  }

  OdDbSplinePtr spline = OdDbSpline::createObject();
  spline->setFitData(points, 3, 0.0, OdGeVector3d::kIdentity, OdGeVector3d::kIdentity);
  spline->setType(OdDbSpline::kFitPoints);
  return spline;
}
