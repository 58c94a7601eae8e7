#ifndef OD_RX_DYNAMIC_LINKER_H
#define OD_RX_DYNAMIC_LINKER_H

#include "Rx/OdError.h"
#include "Rx/OdRxModule.h"

#include <map>
#include <vector>

typedef OdRxModulePtr (*OdRxStaticModuleFactory)();

// Loads module files and built-in modules by name, initialises them once and
// counts their loads. A module is unloaded when its last load is released and
// no smart pointer outside the linker still holds it.
//
// Names: "TD_Db.dll", "TD_Db", "/path/kovAnimationModule_24.1_16.tx" and
// "kovAnimationModule" name modules; the folder, ".tx"/".dll"/".so" and the
// platform's version suffix may be left off.
class OdRxDynamicLinker : public OdRxObject {
public:
  // The version suffix of module file names of this platform.
  static const OdChar* versionSuffix();

  // Loads (or takes another load of) a module. On failure a silent load returns
  // null and keeps the reason in lastError(); a loud one raises it as OdError.
  OdRxModulePtr loadModule(const OdString& moduleName, bool silent = true);
  // Releases one load; returns true when the module was unloaded by it.
  bool unloadModule(const OdString& moduleName);
  // Unloads every module whose loads are all released and that nobody holds.
  void unloadUnreferenced();
  // The loaded module of that name, or null; takes no load.
  OdRxModulePtr getModule(const OdString& moduleName) const;
  bool isModuleLoaded(const OdString& moduleName) const;
  int loadCount(const OdString& moduleName) const;

  // Folders searched for module files given without a folder.
  void addSearchPath(const OdString& folder);
  // A module built into the process, loaded by name like a module file.
  void registerStaticModule(const OdString& moduleName, OdRxStaticModuleFactory factory);
  void unregisterStaticModule(const OdString& moduleName);

  const OdError& lastError() const { return m_lastError; }

  // The canonical name of a module: no folder, extension or version suffix.
  static OdString canonicalName(const OdString& moduleName);

private:
  struct Loaded {
    OdRxModulePtr module;
    void* handle = nullptr;
    int loads = 0;
  };

  OdRxModulePtr fail(OdResult code, const OdString& message, bool silent);
  OdString findModuleFile(const OdString& moduleName) const;
  void unload(std::map<OdString, Loaded>::iterator it);

  std::map<OdString, Loaded> m_loaded;
  std::map<OdString, OdRxStaticModuleFactory> m_static;
  std::vector<OdString> m_searchPaths;
  OdError m_lastError { eOk };
};

// The process-wide dynamic linker.
OdRxDynamicLinker* odrxDynamicLinker();

#endif
