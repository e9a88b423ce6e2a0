#pragma once

#include <memory>
#include <optional>
#include <string>

#include "framework/core/window.h"

class ziFrameMenu;
class zIcon;
struct zResId;

/// What a window manager draws round a client.
struct ziDecoration {
  zDimension around;  ///< the client's size
  zPoint corner;      ///< the client in the frame
  zDimension added;
};

/// A top-level window: a shell, an XmMainWindow in it (the inner widget), and in that an
/// XmBulletinBoard (the main widget), whose children are the frame's.
class zFrameWin : public zWindow {
 public:
  static constexpr int kClassNumber = kClassFrameWin;

  /// Makes no widgets. The first frame made becomes the application's main window.
  zFrameWin(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* title);
  ~zFrameWin() override;

  virtual const char* getCaption() const { return text.c_str(); }
  virtual void setCaption(const RWCString& caption);
  virtual void setCaption(const zString& caption);
  virtual void setCaption(const char* caption);
  virtual void createWidgets();

  void sizeChildren(zEvent* event) override;
  void setShowState(int state) override;
  /// The rectangle with the window manager's decoration.
  void getExterior(zRect& rect) override;
  /// Takes the outer rectangle, decoration included.
  void moveResize(int x, int y, int width, int height) override;

  /// Keeps the first menu that it is given, and owns it.
  void setMenu(std::unique_ptr<ziFrameMenu> menu);
  ziFrameMenu* menu() const { return menuBar.get(); }
  /// The icon by which desktops show the window; iconified, only the main window has one.
  void setIcon(std::unique_ptr<zIcon> newIcon);
  void setIcon(const zResId& resource);
  /// Makes the present outer size the smallest that the user can give.
  void lockMinSize();
  /// Keeps the user, and a small screen's start size, from less than `size` (pixels).
  void setMinSize(const zDimension& size);
  const zDimension& minSize() const { return smallest; }
  Widget shell() const { return shellWidget; }
  bool isMainWindow() const;

 protected:
  void applyGeometry(int x, int y, int width, int height);
  void maximize();
  void setIconicHint();
  /// Tells the window manager the icon; again once there is a window.
  void publishIcon();
  /// Adds the handlers through which events of the shell and of the main widget arrive.
  void addEventHandlers();
  /// What the window manager's decoration adds to the client's size.
  zDimension decorationAllowance(const zRect& exterior);

  Widget shellWidget = nullptr;

 private:
  void zShellEventProc(XEvent& event);
  void activation(zEvent& event, bool isIn);
  void createShell();
  void createInterior();
  void chooseStartGeometry();
  const ziDecoration& decoration(const zDimension& client);
  /// The window manager gave the shell a frame or took it away.
  void reparented(bool hasFrame);

  std::unique_ptr<ziFrameMenu> menuBar;
  zDimension smallest;
  std::unique_ptr<zIcon> icon;
  bool isDecorated = false;
  std::optional<ziDecoration> ownDecoration;
  std::string geometry;  ///< lives here because Xt keeps the pointer
};

/// The main window's frame: made with its widgets and with the window manager's close protocol.
class zAppFrame : public zFrameWin {
 public:
  static constexpr int kClassNumber = kClassAppFrame;

  zAppFrame(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* title);
  ~zAppFrame() override;

  void show(int state = kShowNormal) override;

 private:
  void layOutFirst();
};
