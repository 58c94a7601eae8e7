#include "host/app/kovHostLog.h"

Q_LOGGING_CATEGORY(lcHostDesktop, "kov.host.desktop")
