#ifndef KOV_PRODUCTION_LABELS_H
#define KOV_PRODUCTION_LABELS_H

#include "db/kovProductionChoices.h"

#include <QCoreApplication>
#include <QString>

// The names of the production choices as the user reads them, translated.
// A value outside a list (a drawing may hold one) has an empty name.
class kovProductionLabels {
  Q_DECLARE_TR_FUNCTIONS(kovProductionLabels)
public:
  static QString quality(kovQuality quality);
  static QString outputFormat(kovOutputFormat format);
  static QString encoding(kovEncoding encoding);
};

#endif
