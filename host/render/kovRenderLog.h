#ifndef KOV_RENDER_LOG_H
#define KOV_RENDER_LOG_H

#include "Rx/OdString.h"

#include <QLoggingCategory>

Q_DECLARE_LOGGING_CATEGORY(lcRender)

#endif
