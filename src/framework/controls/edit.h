#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "framework/controls/control.h"
#include "support/text.h"

/// Notification codes of edit controls.
enum zEditCode : int {
  kEditFocusGained = 0x100,
  kEditFocusLost = 0x200,
  kEditChanged = 0x300,
  kEditReturn = 0x700,  ///< Return in a single line
};

/// Base of the edit controls. One byte is one position. The operations on positions cost the same
/// for a log of any length; only text() and setText() handle the whole text.
///
/// A single line shows every text that is put into it in the form of one line (singleLine).
class zEditBase : public zControl {
 public:
  static constexpr int kClassNumber = kClassEditBase;
  /// What setMaxLength(0) sets.
  static constexpr int kDefaultMaxLength = 32000;

  ~zEditBase() override;

  void setText(const char* newText) override;
  RWCString text() const override;
  void moveResize(int x, int y, int width, int height) override;
  int textLength() const;
  /// The text that the program set last in a single line; several lines don't keep it.
  const RWCString& lastSetText() const { return lastText; }

  /// Selects [from, to), both cut to the text, and moves the insertion point to `to`. While the
  /// widget is not realized only the insertion point moves.
  void setSelection(int from, int to);
  /// Selects the whole text, for the user to type over it, without taking the X selection.
  void selectForTyping();
  /// The selected text, empty when there is none.
  RWCString selection() const;
  /// Where the selection lies; none, or an empty one, gives nothing.
  std::optional<zTextRange> selectionRange() const;
  int insertionPosition() const;
  /// Replaces the selection, or inserts at the insertion point; this lands behind the new text
  /// (extra/).
  void replaceSelection(const char* newText);
  /// Inserts at `position` (past the end: at the end), the insertion point lands behind the text.
  /// Costs no look at the text that is there.
  void insertAt(int position, const char* newText);

  /// Bounds what the user can type; 0 stands for kDefaultMaxLength. The program is not bound.
  void setMaxLength(int length);
  /// Scrolls by lines, down when positive; stops at the ends of the text.
  void scroll(int lines);
  using zControl::scroll;
  bool isInView(int position) const;
  /// Scrolls as little as brings the position into view.
  void bringIntoView(int position);
  /// Height of the room for lines, pixels: the widget without scroll bar, border and margins.
  int linesHeight() const;

  // With the clipboard; cut and paste change nothing in a read-only control (extra/).
  void cut();
  void copy();
  void paste();

  /// Binds the text to `string`, which must outlive the binding; null unbinds.
  void setBoundString(RWCString* string) { boundString = string; }
  /// A single line that shows what the program set last stores that as it was set.
  int storeData() override;
  int showData() override;

 protected:
  zEditBase(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* text, int id);

  /// Whether the user may replace `range` by `inserted`, which has its shown form already.
  virtual bool verifyChange(zTextRange range, std::string_view inserted);
  /// Called before an operation reads or changes the text: a control that has not put all of its
  /// text into the widget does so.
  virtual void settle() const {}
  bool takesTyping() const override { return true; }
  int keyArrived(zEvent& event, bool typed) override;
  void applyBackground() override;
  void applyFontToWidget() override;

 private:
  /// The program's own changes are not put to verifyChange. Lives through the control's
  /// destruction.
  class Unverified {
   public:
    explicit Unverified(zEditBase& changed)
        : edit(changed), alive(&changed), previous(std::exchange(changed.verifying, false)) {}
    Unverified(const Unverified&) = delete;
    Unverified& operator=(const Unverified&) = delete;
    ~Unverified() {
      if (alive) {
        edit.verifying = previous;
      }
    }
    bool isAlive() const { return static_cast<bool>(alive); }

   private:
    zEditBase& edit;
    ziAlive alive;
    bool previous;
  };

  Widget settledWidget() const;
  bool isLine() const { return (style() & kEditMultiLine) == 0; }
  /// What the widget is given of a text; `line` holds it if that is another one.
  const char* shownForm(const char* newText, std::string& line) const;
  void fitLine();

  void createLine();
  void createBox();
  void tieCallbacks(bool made);
  template <class Data>
  void onVerify(Data* data);
  template <class Data>
  void onChanged(Data* data);
  template <class Data>
  void onFocus(Data* data);
  template <class Data>
  void onLosingFocus(Data* data);
  template <class Data>
  void onActivate(Data* data);

  RWCString* boundString = nullptr;
  RWCString lastText;
  bool verifying = true;
};

/// A single line.
class zEditLine : public zEditBase {
 public:
  static constexpr int kClassNumber = kClassEditLine;
  zEditLine(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* text, int id);
};

/// Several lines, with scroll bars by the style.
class zEditBox : public zEditBase {
 public:
  static constexpr int kClassNumber = kClassEditBox;
  zEditBox(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* text, int id);
};
