#pragma once

#include <cstdint>

/// Doubly linked list whose nodes may be removed while any number of walks stand on them. Event
/// handlers delete handlers and windows in the middle of a walk, so every walk in the framework
/// goes through this one.
///
/// Invariants: a node that an iterator stands on stays linked; a removed node is skipped by every
/// walk and freed when the last iterator has left it. The sentinel is never removed.

/// Link of the list; also the sentinel of one.
struct zDListNode {
  zDListNode* next = this;
  zDListNode* prev = this;
  std::uint16_t iterators = 0;  ///< how many iterators stand here
  void* payload = nullptr;
  bool deleted = false;
};

/// The list. Holds pointers and never owns what they point to.
class zDblList : protected zDListNode {
 public:
  zDblList() = default;
  zDblList(const zDblList&) = delete;
  zDblList& operator=(const zDblList&) = delete;
  /// Frees the nodes. Iterators that still stand on the list see its end at their next step.
  ~zDblList();

  /// Puts `item` first, so that the newest is met first in a walk.
  void add(void* item) { insertAfter(this, item); }
  /// Puts `item` last.
  void append(void* item) { insertAfter(prev, item); }
  /// Takes the first (last) item out at once; null when the list is empty.
  void* popFront();
  void* popBack();
  /// Removes the first node that holds `item`; false when there is none.
  bool remove(const void* item);
  /// Puts `replacement` where `item` stands; false when it stands nowhere.
  bool replace(const void* item, void* replacement);
  bool isEmpty() const;

 private:
  friend class zDListIter;

  static void insertAfter(zDListNode* where, void* item);
  static void unlinkAndFree(zDListNode* node);
  zDListNode* find(const void* item);
  void* pop(zDListNode* node);

  class zDListIter* walks = nullptr;
};

/// A walk over a zDblList, oldest form: next() until null.
class zDListIter {
 public:
  explicit zDListIter(zDblList& list);
  zDListIter(const zDListIter&) = delete;
  zDListIter& operator=(const zDListIter&) = delete;
  ~zDListIter();

  /// The next item that is not removed; null at the end, after which the walk starts anew.
  void* next();
  /// Marks the node under the iterator as removed. Does nothing when it stands on none.
  void removeCurrent();
  /// Leaves the current node; the walk starts anew.
  void reset();

 private:
  friend class zDblList;

  static void leave(zDListNode* node, const zDListNode* sentinel);

  zDListNode* current = nullptr;
  zDblList* list;
  zDListIter* nextWalk;
};

/// Typed list of pointers to T.
template <class T>
class zTypedDlist {
 public:
  void add(T* item) { items.add(item); }
  void append(T* item) { items.append(item); }
  T* popFront() { return static_cast<T*>(items.popFront()); }
  T* popBack() { return static_cast<T*>(items.popBack()); }
  bool remove(const T* item) { return items.remove(item); }
  bool replace(const T* item, T* replacement) { return items.replace(item, replacement); }
  bool isEmpty() const { return items.isEmpty(); }

  /// A typed walk; `for (Iter walk(list); T* item = walk.next();)`.
  class Iter {
   public:
    explicit Iter(zTypedDlist& list) : walk(list.items) {}
    T* next() { return static_cast<T*>(walk.next()); }
    void removeCurrent() { walk.removeCurrent(); }
    void reset() { walk.reset(); }

   private:
    zDListIter walk;
  };

 private:
  zDblList items;
};

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
