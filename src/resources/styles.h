#pragma once

#include <cstdint>

/// Style words, which tell what a window or a control is like, are composed from these bits. The
/// values are those of Win32. Low bits mean another thing to each kind of control; some bits mean
/// nothing on this system and are told all the same.

inline constexpr std::uint32_t kStyleSubtypeMask = 0x0000000F;  ///< of a control

// Windows.
inline constexpr std::uint32_t kStyleMaximizeBox = 0x00010000;
inline constexpr std::uint32_t kStyleTabStop =
    0x00010000;  ///< on a pane or control: Tab stops here
inline constexpr std::uint32_t kStyleMinimizeBox = 0x00020000;
inline constexpr std::uint32_t kStyleGroup = 0x00020000;  ///< on a control: the first of a group
inline constexpr std::uint32_t kStyleResizeFrame = 0x00040000;
inline constexpr std::uint32_t kStyleSystemMenu = 0x00080000;
inline constexpr std::uint32_t kStyleHorzScroll = 0x00100000;
inline constexpr std::uint32_t kStyleVertScroll = 0x00200000;
inline constexpr std::uint32_t kStyleBothScrolls = kStyleHorzScroll | kStyleVertScroll;
inline constexpr std::uint32_t kStyleBorder = 0x00800000;
inline constexpr std::uint32_t kStyleTitleBar = 0x00C00000;  ///< both bits required
inline constexpr std::uint32_t kStyleColourFromParent = 0x02000000;
inline constexpr std::uint32_t kStyleClipSiblings = 0x04000000;
/// What every window's constructor adds.
inline constexpr std::uint32_t kStyleEveryWindow = kStyleColourFromParent | kStyleClipSiblings;
inline constexpr std::uint32_t kStyleDisabled = 0x08000000;
inline constexpr std::uint32_t kStyleVisible = 0x10000000;
inline constexpr std::uint32_t kStyleChild = 0x40000000;
inline constexpr std::uint32_t kStyleAbsolute = 0x80000000;  ///< keeps the screen's coordinates

/// The program's main window.
inline constexpr std::uint32_t kStyleMainWindow =
    kStyleTitleBar | kStyleSystemMenu | kStyleResizeFrame | kStyleMinimizeBox | kStyleMaximizeBox;

// Dialogs.
inline constexpr std::uint32_t kDialogModalFrame = 0x80;
/// What says how modal a dialog is; its run decides where there is none of these.
inline constexpr std::uint32_t kDialogModalityMask = 0x7000;
inline constexpr std::uint32_t kStyleDialog =
    kStyleAbsolute | kStyleTitleBar | kStyleSystemMenu | kDialogModalFrame;

// Controls.
inline constexpr std::uint32_t kStyleControl = kStyleChild | kStyleVisible;
inline constexpr std::uint32_t kStyleControlStop = kStyleControl | kStyleTabStop;

// Buttons; all but the last are subtypes.
inline constexpr std::uint32_t kButtonPush = 0;
inline constexpr std::uint32_t kButtonDefault = 1;
inline constexpr std::uint32_t kButtonCheck = 2;
inline constexpr std::uint32_t kButtonAutoCheck = 3;
inline constexpr std::uint32_t kButtonRadio = 4;
inline constexpr std::uint32_t kButtonGroup = 7;
inline constexpr std::uint32_t kButtonAutoRadio = 9;
inline constexpr std::uint32_t kButtonImage = 0x10;  ///< shows a picture

// Edit controls.
inline constexpr std::uint32_t kEditMultiLine = 0x4;
inline constexpr std::uint32_t kEditFollowsDown = 0x40;    ///< scrolls to the caret
inline constexpr std::uint32_t kEditFollowsAcross = 0x80;  ///< the same sideways
inline constexpr std::uint32_t kEditReadOnly = 0x800;

// List boxes.
inline constexpr std::uint32_t kListNotifies = 0x1;
inline constexpr std::uint32_t kListSorted = 0x2;
inline constexpr std::uint32_t kListMultiple = 0x8;
inline constexpr std::uint32_t kListAnyHeight = 0x100;  ///< not of whole rows
/// Together with kListMultiple: ranges by Shift, additions by Control.
inline constexpr std::uint32_t kListExtended = 0x800;

// Combo boxes; the first three are subtypes.
inline constexpr std::uint32_t kComboSimple = 1;  ///< the list is always shown
inline constexpr std::uint32_t kComboDropDown = 2;
inline constexpr std::uint32_t kComboDropDownStatic = 3;
inline constexpr std::uint32_t kComboFollowsAcross = 0x40;
inline constexpr std::uint32_t kComboPlainCharacters = 0x80;
inline constexpr std::uint32_t kComboSorted = 0x100;
inline constexpr std::uint32_t kComboSortMask = 0xF00;

// Others.
inline constexpr std::uint32_t kStaticCentredSubtype = 0x1;
inline constexpr std::uint32_t kStaticCentred = 0x00020000;
inline constexpr std::uint32_t kScrollBarVertical = 0x1;  ///< kStyleVertScroll means the same
