#include "host/app/kovHostNamedCommand.h"

#include "host/app/kovHostApplication.h"

OdDbDatabase* kovHostNamedCommand::openDrawing()
{
  kovHostApplication* app = kovHostApplication::instance();
  OdDbDatabase* db = app ? app->currentDatabase() : nullptr;
  if (!db)
    throw OdError(eNoDatabase, OdString(L"No drawing is open"));
  return db;
}
