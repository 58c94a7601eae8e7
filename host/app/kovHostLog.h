#ifndef KOV_HOST_LOG_H
#define KOV_HOST_LOG_H

#include <QLoggingCategory>

// The desktop host's log: commands run, files opened and saved, failures.
Q_DECLARE_LOGGING_CATEGORY(lcHostDesktop)

#endif
