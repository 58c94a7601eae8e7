#ifndef OD_SMART_PTR_H
#define OD_SMART_PTR_H

#include "Rx/OdError.h"
#include "Rx/OdRxObject.h"

#include <cstddef>
#include <type_traits>

// Intrusive pointer to an OdRxObject of class T. Taking a pointer of another
// class queries it at run time and raises OdError_NotThatKindOfClass when the
// object is not a T; a null source gives a null pointer.
template <class T>
class OdSmartPtr {
public:
  OdSmartPtr() = default;
  OdSmartPtr(std::nullptr_t) {}
  OdSmartPtr(const T* object) : m_object(const_cast<T*>(object)) { addRef(); }
  OdSmartPtr(const T* object, OdRxObjMod) : m_object(const_cast<T*>(object)) {}
  OdSmartPtr(const OdSmartPtr& other) : m_object(other.m_object) { addRef(); }
  OdSmartPtr(OdSmartPtr&& other) noexcept : m_object(other.m_object) { other.m_object = nullptr; }

  // Implicit where U is a T; a checked query otherwise.
  template <class U, typename std::enable_if<std::is_base_of<T, U>::value, int>::type = 0>
  OdSmartPtr(const OdSmartPtr<U>& other) : m_object(other.get()) { addRef(); }
  template <class U, typename std::enable_if<!std::is_base_of<T, U>::value, int>::type = 0>
  OdSmartPtr(const OdSmartPtr<U>& other) { query(other.get()); }
  template <class U, typename std::enable_if<!std::is_base_of<T, U>::value
                                                 && std::is_base_of<OdRxObject, U>::value, int>::type = 0>
  OdSmartPtr(const U* object) { query(object); }

  ~OdSmartPtr() { release(); }

  OdSmartPtr& operator=(const OdSmartPtr& other)
  {
    if (m_object != other.m_object) {
      T* old = m_object;
      m_object = other.m_object;
      addRef();
      if (old)
        old->release();
    }
    return *this;
  }
  OdSmartPtr& operator=(OdSmartPtr&& other) noexcept
  {
    if (this != &other) {
      release();
      m_object = other.m_object;
      other.m_object = nullptr;
    }
    return *this;
  }
  OdSmartPtr& operator=(std::nullptr_t) { release(); return *this; }
  OdSmartPtr& operator=(const T* object) { return *this = OdSmartPtr(object); }

  void attach(const T* object) { release(); m_object = const_cast<T*>(object); }
  // Gives up the reference without releasing it.
  T* detach() { T* object = m_object; m_object = nullptr; return object; }
  void release()
  {
    if (m_object) {
      T* old = m_object;
      m_object = nullptr;
      old->release();
    }
  }

  T* get() const { return m_object; }
  T* operator->() const { ODA_ASSERT(m_object); return m_object; }
  T& operator*() const { ODA_ASSERT(m_object); return *m_object; }
  operator T*() const { return m_object; }
  bool isNull() const { return m_object == nullptr; }

private:
  void addRef() { if (m_object) m_object->addRef(); }
  void query(const OdRxObject* object)
  {
    if (!object)
      return;
    OdRxObject* found = object->queryX(T::desc());
    if (!found)
      throw OdError_NotThatKindOfClass(object->isA(), T::desc());
    m_object = static_cast<T*>(found);
  }

  T* m_object = nullptr;
};

template <class T, class U>
bool operator==(const OdSmartPtr<T>& a, const OdSmartPtr<U>& b) { return a.get() == b.get(); }
template <class T, class U>
bool operator!=(const OdSmartPtr<T>& a, const OdSmartPtr<U>& b) { return a.get() != b.get(); }

typedef OdSmartPtr<OdRxObject> OdRxObjectPtr;

#endif
