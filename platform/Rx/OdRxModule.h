#ifndef OD_RX_MODULE_H
#define OD_RX_MODULE_H

#include "Rx/OdRxClass.h"

// A unit of functionality that the dynamic linker loads, initialises and
// unloads: a module file or a module built into the platform.
class OdRxModule : public OdRxObject {
public:
  static OdRxClass* desc();
  OdRxClass* isA() const override;
  OdRxObject* queryX(const OdRxClass* protocolClass) const override;
  static OdSmartPtr<OdRxModule> cast(const OdRxObject* object);

  // Called once after loading, before the module is used.
  virtual void initApp() = 0;
  // Called once before unloading.
  virtual void uninitApp() = 0;
  virtual OdString moduleName() const;
  // The operating system's handle of the module file (null for built-ins).
  virtual void* sysData() const;
  virtual void deleteModule();

protected:
  OdRxModule() = default;
};

typedef OdSmartPtr<OdRxModule> OdRxModulePtr;

// Wraps a module class for a module file: keeps the file's handle and name, which
// the entry point hands over.
template <class T>
class OdRxDynamicModule : public T {
public:
  static OdRxModule* createModule(void*& handle, const OdChar* name)
  {
    auto* module = new OdRxDynamicModule<T>;
    module->m_handle = handle;
    module->m_name = name ? OdString(name) : OdString();
    handle = nullptr;
    return module;
  }
  void* sysData() const override { return m_handle; }
  OdString moduleName() const override { return m_name; }

private:
  void* m_handle = nullptr;
  OdString m_name;
};

// Type of the entry point every module file exports.
typedef OdRxModule* (*OdRxCreateModuleFn)(void*& handle, const OdChar* name);

#define ODRX_MODULE_EXPORT extern "C" __attribute__((visibility("default")))

// Defines the module file's entry point: the first call creates the module
// object and takes over the file's handle; later calls return the same object.
#define ODRX_DEFINE_DYNAMIC_MODULE(UserModuleClass)                                     \
  static OdRxModule* g_pSingletonModule = nullptr;                                     \
  ODRX_MODULE_EXPORT OdRxModule* odrxCreateModuleObject(void*& hModule, const OdChar* name) \
  {                                                                                     \
    if (!g_pSingletonModule)                                                            \
      g_pSingletonModule = OdRxDynamicModule<UserModuleClass>::createModule(hModule, name); \
    else                                                                                \
      hModule = nullptr;                                                                \
    return g_pSingletonModule;                                                          \
  }

#endif
