#pragma once

/// Singly linked lists of pointers. None of them owns what it points to.

/// Link of a singly linked list.
struct zLink {
  zLink* next = nullptr;
};

/// Link that carries a pointer.
struct zPlink : zLink {
  explicit zPlink(void* p) : payload(p) {}

  void* payload;
};

/// A list of pointers, its own head link.
class zPlist : protected zPlink {
 public:
  zPlist() : zPlink(nullptr) {}
  zPlist(const zPlist&) = delete;
  zPlist& operator=(const zPlist&) = delete;
  ~zPlist();

  void addFirst(void* item);
  /// Takes the first item; null when empty.
  void* takeFirst();
  /// The first item; null when empty.
  void* first() const { return next == nullptr ? nullptr : static_cast<zPlink*>(next)->payload; }
  bool isEmpty() const { return next == nullptr; }
};

/// A zPlist used as a stack: the item pushed last comes first.
class zSlist : private zPlist {
 public:
  void push(void* item) { addFirst(item); }
  /// Takes the item pushed last; null when empty.
  void* pop() { return takeFirst(); }
  /// The item pushed last; null when empty.
  void* top() const { return first(); }
  using zPlist::isEmpty;
};

/// Typed stack of pointers to T.
template <class T>
class zTypedSlist {
 public:
  void push(T* item) { items.push(item); }
  T* pop() { return static_cast<T*>(items.pop()); }
  T* top() const { return static_cast<T*>(items.top()); }
  bool isEmpty() const { return items.isEmpty(); }

 private:
  zSlist items;
};
