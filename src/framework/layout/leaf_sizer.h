#pragma once

#include <functional>

#include "framework/layout/sizer.h"

/// A sizer that never lays out children: it only holds a rectangle.
class zLeafSizer : public zSizer {
 public:
  using zSizer::zSizer;

  void update(const zRect* rect) override;
  void getInfo(zLayoutInfo& info) override;
  void apply(const zRect& rect, int noMove) override;
  zSizer* query(int kind) override;
};

/// A leaf that lets another object answer the layout's questions through two of its members.
class zRedirSizer : public zLeafSizer {
 public:
  template <class T>
  using InfoMember = void (T::*)(zLayoutInfo&);
  template <class T>
  using ApplyMember = void (T::*)(const zRect&, int noMove);

  /// `object` is not owned and must outlive the sizer; it and each member may be null, and the
  /// answer is then that of a zLeafSizer.
  template <class T>
  zRedirSizer(T* object, InfoMember<T> infoMember, ApplyMember<T> applyMember,
              zSizer* parent = nullptr)
      : zLeafSizer(parent) {
    if (object != nullptr && infoMember != nullptr) {
      askInfo = [object, infoMember](zLayoutInfo& info) { (object->*infoMember)(info); };
    }
    if (object != nullptr && applyMember != nullptr) {
      tellApply = [object, applyMember](const zRect& rect, int noMove) {
        (object->*applyMember)(rect, noMove);
      };
    }
  }

  void getInfo(zLayoutInfo& info) override;
  void apply(const zRect& rect, int noMove) override;

 private:
  std::function<void(zLayoutInfo&)> askInfo;
  std::function<void(const zRect&, int)> tellApply;
};
