#include "host/render/kovRenderLog.h"

Q_LOGGING_CATEGORY(lcRender, "kov.render", QtWarningMsg)
