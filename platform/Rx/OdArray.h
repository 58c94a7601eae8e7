#ifndef OD_ARRAY_H
#define OD_ARRAY_H

#include "Rx/OdPlatform.h"

#include <algorithm>
#include <initializer_list>
#include <vector>

// The platform's growable array: a std::vector with the names the API uses.
template <class T>
class OdArray : public std::vector<T> {
public:
  typedef std::vector<T> Base;
  typedef unsigned int size_type;

  OdArray() = default;
  explicit OdArray(size_type n) : Base(n) {}
  OdArray(size_type n, const T& value) : Base(n, value) {}
  OdArray(std::initializer_list<T> init) : Base(init) {}

  size_type size() const { return static_cast<size_type>(Base::size()); }
  size_type length() const { return size(); }
  size_type logicalLength() const { return size(); }
  bool isEmpty() const { return Base::empty(); }

  OdArray& append(const T& value) { Base::push_back(value); return *this; }
  OdArray& append(const OdArray& other)
  {
    Base::insert(Base::end(), other.begin(), other.end());
    return *this;
  }
  OdArray& insertAt(size_type index, const T& value)
  {
    Base::insert(Base::begin() + index, value);
    return *this;
  }
  OdArray& removeAt(size_type index)
  {
    Base::erase(Base::begin() + index);
    return *this;
  }
  OdArray& removeLast() { Base::pop_back(); return *this; }
  OdArray& setLogicalLength(size_type n) { Base::resize(n); return *this; }
  OdArray& setPhysicalLength(size_type n) { Base::reserve(n); return *this; }

  const T& at(size_type i) const { return Base::at(i); }
  T& at(size_type i) { return Base::at(i); }
  const T& getAt(size_type i) const { return Base::at(i); }
  OdArray& setAt(size_type i, const T& value) { Base::at(i) = value; return *this; }
  const T& first() const { return Base::front(); }
  const T& last() const { return Base::back(); }
  T* asArrayPtr() { return Base::data(); }
  const T* getPtr() const { return Base::data(); }

  bool find(const T& value, size_type& index, size_type start = 0) const
  {
    for (size_type i = start; i < size(); ++i) {
      if ((*this)[i] == value) {
        index = i;
        return true;
      }
    }
    return false;
  }
  bool contains(const T& value) const
  {
    size_type i = 0;
    return find(value, i);
  }
  OdArray& reverse()
  {
    std::reverse(Base::begin(), Base::end());
    return *this;
  }
};

typedef OdArray<int> OdIntArray;
typedef OdArray<double> OdGeDoubleArray;

#endif
