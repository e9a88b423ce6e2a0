#pragma once

#include <memory>

#include "framework/core/notify.h"
#include "framework/draw/pictures.h"
#include "framework/visuals/visual.h"
#include "framework/visuals/visual_text.h"

/// A visual that is pressed with button 1 and fires when it is released on the visual: to its press
/// handler, if that does not take it to its click handler, and then as a command to the parent of
/// the window that it stands in.
class ziVisButton : public ziVisControl {
 public:
  /// Style bit: stays down until it is pressed again.
  static constexpr std::uint32_t kLatching = 0x200;

  ziVisButton(ziCompound* owner, std::unique_ptr<zSizer> sizer, std::uint32_t style, int id);

  int id() const { return buttonId; }
  bool isArmed() const { return armed; }
  bool isPressed() const { return state == kVisualDown || state == kVisualHeld; }
  /// Both handlers may be unbound by a null target.
  void setPressHandler(zEvH* target, zHandler member) { pressHandler = {target, member}; }
  void setClickHandler(zEvH* target, zHandler member) { clickHandler = {target, member}; }
  /// A disabled button takes no mouse; a press that is under way is given up. Shows at once.
  void setEnabled(bool on);
  bool isEnabled() const { return state != kVisualDisabled; }

  void draw(zDisplay& display) override;
  int mouseDown(zEvent* event) override;
  int mouseUp(zEvent* event) override;
  int mouseMove(zEvent* event) override;

  // Each stores the state that it draws.
  virtual void drawIdle(zDisplay& display);
  virtual void drawDown(zDisplay& display);
  virtual void drawHeld(zDisplay& display);
  /// Looks pressed, as by the keyboard.
  virtual void press();
  /// Looks up again and fires. The button may be gone afterwards.
  virtual void click();
  /// Tells the handlers, or else the parent. The button may be gone afterwards.
  virtual int fire(XEvent* cause);

 private:
  struct Binding {
    zEvH* target = nullptr;
    zHandler member = nullptr;
    int call(zEvent& event) const { return target == nullptr ? 0 : (target->*member)(&event); }
  };
  using Drawing = void (ziVisButton::*)(zDisplay&);

  void show(Drawing drawing);
  void showAsBefore();
  void disarm();

  int buttonId;
  bool armed = false;
  bool buttonDown = false;
  zVisualState stateAtPress = kVisualUp;
  Binding pressHandler;
  Binding clickHandler;
};

/// Style bits of a bitmap button.
enum zBmpButtonStyle : std::uint32_t {
  kBmpImagesMask = 0x30,       ///< which images the bitmap holds, side by side
  kBmpImageUp = 0x00,          ///< one; greyed by the program when disabled
  kBmpImageUpDown = 0x10,      ///< up, down
  kBmpImageUpDisabled = 0x20,  ///< up, disabled
  kBmpImageUpDownDisabled = 0x30,
  kBmpDefaultFrame = 0x1000,  ///< a black frame with a white fill round it
  kBmpNoFrame = 0x2000,       ///< no frame and no bevel
  kBmpFlat = 0x4000,          ///< the same, and the image stays where it is when pressed
  kBmpTool = 0x8000,          ///< a button of a toolbar
};

/// A button that shows an image, and a caption if it has one.
class ziVisBmpButtonInternal : public ziVisButton {
 public:
  enum class Ownership { kOwned, kShared };

  /// `bitmap` may be null; one that is shared must outlive the button.
  ziVisBmpButtonInternal(ziCompound* owner, std::unique_ptr<zSizer> sizer, std::uint32_t style,
                         int id, zBitmap* bitmap, Ownership ownership);
  ~ziVisBmpButtonInternal() override;

  /// The caption stands in the same compound, behind this button; null for none.
  void setCaption(ziVisText3dBmp* text);
  bool hasCaption() const { return caption != nullptr; }
  /// Where image and caption stand.
  zRect innerRect() const;
  /// The size of one image.
  zDimension imageSize() const;

  void drawUp(zDisplay& display) override;
  void drawDisabled(zDisplay& display) override;
  void drawIdle(zDisplay& display) override;
  void drawDown(zDisplay& display) override;
  void drawHeld(zDisplay& display) override;

 private:
  std::uint32_t images() const { return style() & kBmpImagesMask; }
  bool hasEdge() const { return (style() & (kBmpNoFrame | kBmpFlat)) == 0; }
  void drawAll(zDisplay& display);
  void drawBody(zDisplay& display);
  void drawImage(zDisplay& display);
  int imageIndex() const;
  const zBitmap* grayImage();

  zBitmap* bitmap;
  bool bitmapShared;
  std::unique_ptr<zBitmap> grayBitmap;  ///< made when first wanted
  int frameCount;
  int imageX = 0;
  int imageY = 0;
  ziVisText3dBmp* caption = nullptr;
};
