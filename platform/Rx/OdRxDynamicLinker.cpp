#include "Rx/OdRxDynamicLinker.h"

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcLinker, "kov.platform.linker")

namespace {

const OdChar* const kExtensions[] = { L".tx", L".dll", L".so", L".drx" };

bool endsWith(const std::wstring& text, const std::wstring& tail)
{
  return text.size() >= tail.size() && text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

bool isRegularFile(const OdString& path)
{
  struct stat info {};
  return ::stat(path.toUtf8().c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

OdString executableFolder()
{
  char buffer[4096];
  const ssize_t n = ::readlink("/proc/self/exe", buffer, sizeof(buffer) - 1);
  if (n <= 0)
    return OdString();
  std::string path(buffer, static_cast<size_t>(n));
  const size_t slash = path.rfind('/');
  return OdString(path.substr(0, slash == std::string::npos ? 0 : slash).c_str());
}

OdString folderOf(const OdString& path)
{
  const std::wstring& text = path.toStdWString();
  const size_t slash = text.rfind(L'/');
  return slash == std::wstring::npos ? OdString() : OdString(text.substr(0, slash));
}

OdString fileNameOf(const OdString& path)
{
  const std::wstring& text = path.toStdWString();
  const size_t slash = text.rfind(L'/');
  return slash == std::wstring::npos ? path : OdString(text.substr(slash + 1));
}

} // namespace

const OdChar* OdRxDynamicLinker::versionSuffix()
{
  return L"_24.1_16";
}

OdString OdRxDynamicLinker::canonicalName(const OdString& moduleName)
{
  std::wstring name = fileNameOf(moduleName).toStdWString();
  for (const OdChar* ext : kExtensions) {
    if (endsWith(name, ext)) {
      name.resize(name.size() - std::wcslen(ext));
      break;
    }
  }
  if (endsWith(name, versionSuffix()))
    name.resize(name.size() - std::wcslen(versionSuffix()));
  return OdString(name);
}

OdRxModulePtr OdRxDynamicLinker::fail(OdResult code, const OdString& message, bool silent)
{
  m_lastError = OdError(code, message);
  qCWarning(lcLinker, "%s", message.toUtf8().c_str());
  if (!silent)
    throw m_lastError;
  return OdRxModulePtr();
}

OdString OdRxDynamicLinker::findModuleFile(const OdString& moduleName) const
{
  std::vector<OdString> folders;
  const OdString given = folderOf(moduleName);
  if (!given.isEmpty()) {
    folders.push_back(given);
  } else {
    folders = m_searchPaths;
    folders.push_back(executableFolder());
    folders.push_back(OdString(L"."));
  }
  const OdString base = fileNameOf(moduleName);
  const OdString canonical = canonicalName(moduleName);
  const OdString candidates[] = { base, base + L".tx", canonical + versionSuffix() + L".tx" };
  for (const OdString& folder : folders) {
    for (const OdString& candidate : candidates) {
      const OdString path = folder + L"/" + candidate;
      if (isRegularFile(path))
        return path;
    }
  }
  return OdString();
}

OdRxModulePtr OdRxDynamicLinker::loadModule(const OdString& moduleName, bool silent)
{
  m_lastError = OdError(eOk);
  const OdString key = canonicalName(moduleName);
  if (key.isEmpty())
    return fail(eInvalidInput, OdString(L"No module name given"), silent);

  auto loaded = m_loaded.find(key);
  if (loaded != m_loaded.end()) {
    ++loaded->second.loads;
    return loaded->second.module;
  }

  Loaded entry;
  const auto builtIn = m_static.find(key);
  if (builtIn != m_static.end()) {
    entry.module = builtIn->second();
    if (entry.module.isNull())
      return fail(eInvalidModule, OdString(L"Built-in module ") + key + L" could not be created", silent);
  } else {
    const OdString path = findModuleFile(moduleName);
    if (path.isEmpty())
      return fail(eFileNotFound, OdString(L"Module file ") + moduleName + L" was not found", silent);
    void* handle = ::dlopen(path.toUtf8().c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
      const char* reason = ::dlerror();
      return fail(eDLLLoadFailed, OdString(L"Module file ") + path + L" could not be loaded: "
                                      + OdString(reason ? reason : "unknown reason"), silent);
    }
    auto entryPoint = reinterpret_cast<OdRxCreateModuleFn>(::dlsym(handle, "odrxCreateModuleObject"));
    if (!entryPoint) {
      ::dlclose(handle);
      return fail(eInvalidModule, OdString(L"File ") + path
                                      + L" is not a module: it exports no odrxCreateModuleObject", silent);
    }
    void* given = handle;
    OdRxModule* module = entryPoint(given, key.c_str());
    if (!module) {
      ::dlclose(handle);
      return fail(eInvalidModule, OdString(L"Module ") + path + L" created no module object", silent);
    }
    entry.module = module;
    entry.handle = handle;
  }

  try {
    entry.module->initApp();
  } catch (const OdError& error) {
    OdRxModule* module = entry.module.detach();
    module->deleteModule();
    if (entry.handle)
      ::dlclose(entry.handle);
    return fail(error.code(), OdString(L"Module ") + key + L" failed to start: " + error.description(), silent);
  }
  entry.loads = 1;
  OdRxModulePtr result = entry.module;
  m_loaded.emplace(key, std::move(entry));
  return result;
}

void OdRxDynamicLinker::unload(std::map<OdString, Loaded>::iterator it)
{
  Loaded entry = std::move(it->second);
  m_loaded.erase(it);
  entry.module->uninitApp();
  if (entry.handle) {
    // The module object lives in the module file's code: destroy it through
    // the file before the file goes.
    entry.module.detach()->deleteModule();
    ::dlclose(entry.handle);
  }
}

bool OdRxDynamicLinker::unloadModule(const OdString& moduleName)
{
  auto it = m_loaded.find(canonicalName(moduleName));
  if (it == m_loaded.end())
    return false;
  if (it->second.loads > 0)
    --it->second.loads;
  if (it->second.loads > 0 || it->second.module->numRefs() > 1)
    return false;
  unload(it);
  return true;
}

void OdRxDynamicLinker::unloadUnreferenced()
{
  bool unloadedOne = true;
  // Unloading one module may release the last hold on another.
  while (unloadedOne) {
    unloadedOne = false;
    for (auto it = m_loaded.begin(); it != m_loaded.end(); ++it) {
      if (it->second.loads == 0 && it->second.module->numRefs() <= 1) {
        unload(it);
        unloadedOne = true;
        break;
      }
    }
  }
}

OdRxModulePtr OdRxDynamicLinker::getModule(const OdString& moduleName) const
{
  const auto it = m_loaded.find(canonicalName(moduleName));
  return it == m_loaded.end() ? OdRxModulePtr() : it->second.module;
}

bool OdRxDynamicLinker::isModuleLoaded(const OdString& moduleName) const
{
  return m_loaded.count(canonicalName(moduleName)) != 0;
}

int OdRxDynamicLinker::loadCount(const OdString& moduleName) const
{
  const auto it = m_loaded.find(canonicalName(moduleName));
  return it == m_loaded.end() ? 0 : it->second.loads;
}

void OdRxDynamicLinker::addSearchPath(const OdString& folder)
{
  for (const OdString& known : m_searchPaths) {
    if (known == folder)
      return;
  }
  m_searchPaths.push_back(folder);
}

void OdRxDynamicLinker::registerStaticModule(const OdString& moduleName, OdRxStaticModuleFactory factory)
{
  m_static[canonicalName(moduleName)] = factory;
}

void OdRxDynamicLinker::unregisterStaticModule(const OdString& moduleName)
{
  m_static.erase(canonicalName(moduleName));
}

OdRxDynamicLinker* odrxDynamicLinker()
{
  static OdRxDynamicLinker* linker = [] {
    auto* l = new OdRxDynamicLinker;
    l->addRef();
    return l;
  }();
  return linker;
}
