#pragma once

#include <concepts>
#include <functional>
#include <type_traits>

#include <Xm/Protocols.h>
#include <Xm/XmAll.h>

/// What Xt calls tied to members of ours, checked by the compiler: callbacks, events, time-outs,
/// inputs and work procedures. This is the one place where client data is cast.
///
/// `Member` is a member function, which may be private, or a function whose first parameter is a
/// reference to the target. What is tied by a class is untied by the same one: the target is
/// handed over as the class that has the member.

/// A callback resource with the type of the data that it is called with.
template <class Data>
struct zCallbackName {
  const char* resource;
};

/// The callbacks that the framework uses.
namespace callback {
inline constexpr zCallbackName<XmAnyCallbackStruct> activate{XmNactivateCallback};
inline constexpr zCallbackName<XmArrowButtonCallbackStruct> arrowActivate{XmNactivateCallback};
inline constexpr zCallbackName<XmToggleButtonCallbackStruct> toggled{XmNvalueChangedCallback};
inline constexpr zCallbackName<XmAnyCallbackStruct> textChanged{XmNvalueChangedCallback};
inline constexpr zCallbackName<XmTextVerifyCallbackStruct> modifyVerify{XmNmodifyVerifyCallback};
inline constexpr zCallbackName<XmTextVerifyCallbackStruct> losingFocus{XmNlosingFocusCallback};
inline constexpr zCallbackName<XmAnyCallbackStruct> focus{XmNfocusCallback};
inline constexpr zCallbackName<XmListCallbackStruct> browseSelection{XmNbrowseSelectionCallback};
inline constexpr zCallbackName<XmListCallbackStruct> multipleSelection{
    XmNmultipleSelectionCallback};
inline constexpr zCallbackName<XmListCallbackStruct> extendedSelection{
    XmNextendedSelectionCallback};
inline constexpr zCallbackName<XmListCallbackStruct> defaultAction{XmNdefaultActionCallback};
inline constexpr zCallbackName<XmAnyCallbackStruct> ok{XmNokCallback};
inline constexpr zCallbackName<XmAnyCallbackStruct> cancel{XmNcancelCallback};
inline constexpr zCallbackName<XmAnyCallbackStruct> help{XmNhelpCallback};
inline constexpr zCallbackName<XmAnyCallbackStruct> map{XmNmapCallback};
inline constexpr zCallbackName<XmAnyCallbackStruct> unmap{XmNunmapCallback};
inline constexpr zCallbackName<XmAnyCallbackStruct> destroy{XmNdestroyCallback};
inline constexpr zCallbackName<XmScrollBarCallbackStruct> scrolled{XmNvalueChangedCallback};

/// The eight callbacks of a scroll bar.
inline constexpr zCallbackName<XmScrollBarCallbackStruct> scrollBar[] = {
    {XmNvalueChangedCallback},  {XmNincrementCallback},     {XmNdecrementCallback},
    {XmNpageIncrementCallback}, {XmNpageDecrementCallback}, {XmNtoTopCallback},
    {XmNtoBottomCallback},      {XmNdragCallback},
};
}  // namespace callback

/// Events of a widget, as XtInsertEventHandler takes them.
struct zEventKinds {
  EventMask mask;
  bool nonmaskable = false;  ///< GraphicsExpose, client messages and the like too
  XtListPosition position = XtListTail;
};

/// The window manager asks to close a shell, as something to connect to.
struct zCloseRequest {};
inline constexpr zCloseRequest kCloseRequest;

template <class Function>
struct ziTargetOf;
template <class Result, class Target, class... Rest>
struct ziTargetOf<Result (Target::*)(Rest...)> {
  using Type = Target;
};
template <class Result, class Target, class... Rest>
struct ziTargetOf<Result (Target::*)(Rest...) const> {
  using Type = Target;
};
template <class Result, class Target, class... Rest>
struct ziTargetOf<Result (*)(Target&, Rest...)> {
  using Type = Target;
};

/// The class whose objects `Member` is called for.
template <auto Member>
using ziTarget = typename ziTargetOf<decltype(Member)>::Type;

template <auto Member>
ziTarget<Member>& ziTargetIn(XtPointer client) {
  return *static_cast<ziTarget<Member>*>(client);
}

/// Calls `Member` with the typed call data, or without where it takes none.
template <auto Member, class Data>
void ziCallbackTrampoline(Widget, XtPointer target, XtPointer data) noexcept {
  if constexpr (std::invocable<decltype(Member), ziTarget<Member>&, Data*>) {
    std::invoke(Member, ziTargetIn<Member>(target), static_cast<Data*>(data));
  } else {
    std::invoke(Member, ziTargetIn<Member>(target));
  }
}

/// Calls `Member` with the event. True as its result keeps the event from the widget.
template <auto Member>
void ziEventTrampoline(Widget, XtPointer target, XEvent* event, Boolean* toWidget) noexcept {
  if constexpr (std::is_same_v<
                    bool, std::invoke_result_t<decltype(Member), ziTarget<Member>&, XEvent&>>) {
    if (std::invoke(Member, ziTargetIn<Member>(target), *event)) {
      *toWidget = False;
    }
  } else {
    std::invoke(Member, ziTargetIn<Member>(target), *event);
  }
}

template <auto Member, class Target>
void ziEventTrampoline(Widget widget, XtPointer target, XEvent* event, Boolean* toWidget) noexcept {
  (static_cast<Target*>(target)->*Member)(widget, event, toWidget);
}

/// Ties the callback `name` of `widget` to `Member` of `target`, which must outlive the tie.
template <auto Member, class Data>
requires(
    std::invocable<decltype(Member), ziTarget<Member>&, Data*> ||
    std::invocable<decltype(Member), ziTarget<Member>&>) void connect(Widget widget,
                                                                      zCallbackName<Data> name,
                                                                      ziTarget<Member>* target) {
  XtAddCallback(widget, const_cast<char*>(name.resource), &ziCallbackTrampoline<Member, Data>,
                target);
}

/// Undoes a connect with the same arguments.
template <auto Member, class Data>
void disconnect(Widget widget, zCallbackName<Data> name, ziTarget<Member>* target) {
  XtRemoveCallback(widget, const_cast<char*>(name.resource), &ziCallbackTrampoline<Member, Data>,
                   target);
}

/// Ties all callbacks of a scroll bar.
template <auto Member>
void connectScrollBar(Widget bar, ziTarget<Member>* target) {
  for (const auto& name : callback::scrollBar) {
    connect<Member>(bar, name, target);
  }
}

template <auto Member>
void disconnectScrollBar(Widget bar, ziTarget<Member>* target) {
  for (const auto& name : callback::scrollBar) {
    disconnect<Member>(bar, name, target);
  }
}

/// Ties events of `widget` to `Member` of `target`, which must outlive the tie.
template <auto Member>
requires std::invocable < decltype(Member), ziTarget<Member>
&, XEvent& > void connect(Widget widget, const zEventKinds& kinds, ziTarget<Member>* target) {
  XtInsertEventHandler(widget, kinds.mask, kinds.nonmaskable ? True : False,
                       &ziEventTrampoline<Member>, target, kinds.position);
}

/// Undoes a connect with the same arguments.
template <auto Member>
void disconnect(Widget widget, const zEventKinds& kinds, ziTarget<Member>* target) {
  XtRemoveEventHandler(widget, kinds.mask, kinds.nonmaskable ? True : False,
                       &ziEventTrampoline<Member>, target);
}

inline Atom ziCloseProtocol(Widget shell) {
  return XInternAtom(XtDisplay(shell), "WM_DELETE_WINDOW", False);
}

template <auto Member>
void connect(Widget shell, zCloseRequest, ziTarget<Member>* target) {
  constexpr XtCallbackProc procedure = &ziCallbackTrampoline<Member, XmAnyCallbackStruct>;
  XmAddWMProtocolCallback(shell, ziCloseProtocol(shell), procedure, target);
}

template <auto Member>
void disconnect(Widget shell, zCloseRequest, ziTarget<Member>* target) {
  constexpr XtCallbackProc procedure = &ziCallbackTrampoline<Member, XmAnyCallbackStruct>;
  XmRemoveWMProtocolCallback(shell, ziCloseProtocol(shell), procedure, target);
}

/// Calls `Member` once, `milliseconds` from now, unless XtRemoveTimeOut takes it back.
template <auto Member>
XtIntervalId connectTimeOut(XtAppContext context, unsigned long milliseconds,
                            ziTarget<Member>* target) {
  return XtAppAddTimeOut(
      context, milliseconds,
      [](XtPointer client, XtIntervalId*) noexcept {
        std::invoke(Member, ziTargetIn<Member>(client));
      },
      target);
}

/// Calls `Member` whenever `descriptor` can be read, until XtRemoveInput.
template <auto Member>
XtInputId connectInput(XtAppContext context, int descriptor, ziTarget<Member>* target) {
  return XtAppAddInput(
      // NOLINTNEXTLINE(performance-no-int-to-ptr): Xt takes the condition as a pointer
      context, descriptor, reinterpret_cast<XtPointer>(XtInputReadMask),
      [](XtPointer client, int*, XtInputId*) noexcept {
        std::invoke(Member, ziTargetIn<Member>(client));
      },
      target);
}

/// Calls `Member` in idle passes until it returns true or XtRemoveWorkProc takes it off.
template <auto Member>
XtWorkProcId connectWork(XtAppContext context, ziTarget<Member>* target) {
  return XtAppAddWorkProc(
      context,
      [](XtPointer client) noexcept -> Boolean {
        return std::invoke(Member, ziTargetIn<Member>(client)) ? True : False;
      },
      target);
}
