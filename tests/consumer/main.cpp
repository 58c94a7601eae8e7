// Animates a point along two keyframes and checks where it is a quarter of
// the way: the headers, the libraries and their dependencies all resolve.
#include "animation/kovAnimationItem.h"
#include "animation/kovAnimationTrack.h"

#include "Ge/OdGePoint3d.h"

#include <QVariantList>

#include <cstdio>

int main()
{
  kovAnimationTrack track;
  track.setStartMillisecond(1000);
  track.addElement();
  kovAnimationItem& location = track.elementAt(0);
  location.setValue(0, QVariantList { 0.0, 0.0, 0.0 });
  location.setValue(1000, QVariantList { 8.0, 4.0, -2.0 });

  const OdGePoint3d at = track.computePointAtMillisecond(1250);
  const OdGePoint3d expected(2.0, 1.0, -0.5);
  std::printf("at 1250 ms: %g,%g,%g\n", at.x, at.y, at.z);
  if (at.distanceTo(expected) > 1e-9) {
    std::printf("expected %g,%g,%g\n", expected.x, expected.y, expected.z);
    return 1;
  }
  return 0;
}
