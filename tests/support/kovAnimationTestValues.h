#ifndef KOV_ANIMATION_TEST_VALUES_H
#define KOV_ANIMATION_TEST_VALUES_H

// Keyframe values and checks shared by the data model's tests.
#include "kovChecks.h"

#include "animation/kovAnimationTrack.h"

#include "Ge/OdGeMatrix3d.h"

#include <QObject>
#include <QStringList>
#include <QVariantList>

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>

// Texts in the tests are UTF-8 literals; the build forbids the implicit conversion.
inline QString str(const char* text)
{
  return QString::fromUtf8(text);
}

inline QStringList strs(std::initializer_list<const char*> texts)
{
  QStringList list;
  for (const char* text : texts)
    list << str(text);
  return list;
}

// A new last sub-track of the track, of that type, holding those keyframes.
inline kovAnimationItem& addItem(kovAnimationTrack& track, kovAnimationItem::AnimationType type,
                                 const QMap<int, QVariant>& values)
{
  track.addElement();
  kovAnimationItem& item = track.elementAt(track.numElements() - 1);
  item.setAnimationType(type, OdGePoint3d::kOrigin);
  item.setValues(values);
  return item;
}

inline QVariant pointValue(double x, double y, double z)
{
  return QVariantList { x, y, z };
}

inline QVariant sixValue(double x, double y, double z, double a, double b, double c)
{
  return QVariantList { x, y, z, a, b, c };
}

// How many times signal fires while action runs; a lambda stands in for a
// signal spy so that the tests need QtCore only.
template <class Sender, class... Args>
int countSignals(Sender* sender, void (Sender::*signal)(Args...), const std::function<void()>& action)
{
  int count = 0;
  const QMetaObject::Connection c = QObject::connect(sender, signal, [&count](Args...) { ++count; });
  action();
  QObject::disconnect(c);
  return count;
}

inline void expectMatrixNear(const OdGeMatrix3d& actual, const OdGeMatrix3d& expected, double tol = 1e-9)
{
  for (int r = 0; r < 4; ++r) {
    for (int c = 0; c < 4; ++c)
      EXPECT_NEAR(actual(r, c), expected(r, c), tol) << "entry " << r << "," << c;
  }
}

#endif
