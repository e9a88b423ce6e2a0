#pragma once

#include <concepts>

#include <Xm/XmAll.h>

/// Callbacks and event handlers of Xt tied to member functions, checked by the compiler. This is
/// the one place where client data is cast.

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

/// The Xt procedure that calls `Member` of the client data with typed call data.
template <auto Member, class Target, class Data>
void ziCallbackTrampoline(Widget, XtPointer target, XtPointer data) noexcept {
  (static_cast<Target*>(target)->*Member)(static_cast<Data*>(data));
}

/// Ties the callback `name` of `widget` to `Member` of `target`, which must outlive the tie.
template <auto Member, class Data, class Target>
requires std::invocable<decltype(Member), Target*, Data*>
void connect(Widget widget, zCallbackName<Data> name, Target* target) {
  XtAddCallback(widget, const_cast<char*>(name.resource),
                &ziCallbackTrampoline<Member, Target, Data>, target);
}

/// Undoes a connect with the same arguments.
template <auto Member, class Data, class Target>
requires std::invocable<decltype(Member), Target*, Data*>
void disconnect(Widget widget, zCallbackName<Data> name, Target* target) {
  XtRemoveCallback(widget, const_cast<char*>(name.resource),
                   &ziCallbackTrampoline<Member, Target, Data>, target);
}

/// The Xt event handler that calls `Member` of the client data with the widget, the event and the
/// flag that says whether the widget gets the event too.
template <auto Member, class Target>
void ziEventTrampoline(Widget widget, XtPointer target, XEvent* event, Boolean* toWidget) noexcept {
  (static_cast<Target*>(target)->*Member)(widget, event, toWidget);
}
