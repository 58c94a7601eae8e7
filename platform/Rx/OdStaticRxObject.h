#ifndef OD_STATIC_RX_OBJECT_H
#define OD_STATIC_RX_OBJECT_H

#include "Rx/OdRxObject.h"

// An Rx object with static or member storage: smart pointers may hold it, but
// reference counting does nothing and never deletes it.
template <class T>
class OdStaticRxObject : public T {
public:
  using T::T;
  void addRef() override {}
  void release() override {}
  long numRefs() const override { return 1; }
};

#endif
