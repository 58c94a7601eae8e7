#ifndef OD_SHARED_PTR_H
#define OD_SHARED_PTR_H

#include "Rx/OdPlatform.h"

#include <memory>

// A shared owning pointer for objects that are not reference counted
// themselves: the last copy deletes the object.
template <class T>
class OdSharedPtr {
public:
  OdSharedPtr() = default;
  OdSharedPtr(std::nullptr_t) {}
  explicit OdSharedPtr(T* object) : m_ptr(object) {}

  T* get() const { return m_ptr.get(); }
  T* operator->() const { ODA_ASSERT(m_ptr); return m_ptr.get(); }
  T& operator*() const { ODA_ASSERT(m_ptr); return *m_ptr; }
  bool isNull() const { return !m_ptr; }
  int refCount() const { return static_cast<int>(m_ptr.use_count()); }
  void reset(T* object = nullptr) { m_ptr.reset(object); }
  OdSharedPtr& operator=(T* object) { m_ptr.reset(object); return *this; }

  bool operator==(const OdSharedPtr& other) const { return m_ptr == other.m_ptr; }
  bool operator!=(const OdSharedPtr& other) const { return m_ptr != other.m_ptr; }
  bool operator==(const T* other) const { return m_ptr.get() == other; }
  bool operator!=(const T* other) const { return m_ptr.get() != other; }

private:
  std::shared_ptr<T> m_ptr;
};

#endif
