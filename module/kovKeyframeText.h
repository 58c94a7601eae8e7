#ifndef KOV_KEYFRAME_TEXT_H
#define KOV_KEYFRAME_TEXT_H

#include "animation/kovAnimationItem.h"

#include <QCoreApplication>
#include <QString>
#include <QVariant>

// Keyframe values typed on a command line, by what the sub-track holds:
//
//   number (scale, numeric parameter)  1.5
//   on/off                             On, Off (also True/False, Yes/No, 1/0)
//   text                               the text; one of the list's when the parameter has one
//   point, location                    x,y,z  or x,y,z,tx,ty,tz (a path's tangent there)
//   rotation by angles                 ax,ay,az  or px,py,pz,ax,ay,az (degrees about X, Y, Z; a pivot)
//   rotation to a target               x,y,z  or px,py,pz,x,y,z (the target; a pivot)
//   rotation to an entity              NAME  or px,py,pz,NAME
class kovKeyframeText {
  Q_DECLARE_TR_FUNCTIONS(kovKeyframeText)
public:
  // The value the text stands for in item; false, with the reason in
  // error, when it stands for none.
  static bool parse(const kovAnimationItem& item, const QString& text, QVariant& value, QString& error);
};

#endif
