#pragma once

#include <windows.h>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "forms/controls_win.h"
#include "forms/focus_keeper_win.h"
#include "forms/window_win.h"
#include "runtime/handle_win.h"
#include "tray/frmAbout_layout.h"
#include "tray/shell_notifier.h"

namespace tidewell {

/// What the tray needs of the main window.
class MainForm {
 public:
  /// Whether it is shown, and not minimised.
  [[nodiscard]] virtual bool Visible() const = 0;
  /// Shows it in the foreground.
  virtual void Show() = 0;
  /// Hides it, or minimises it if there is no icon to show it again.
  virtual void Hide() = 0;
  /// Gives its icons to a window that has others.
  virtual void SetIcons(HWND window) const = 0;
  /// The work area of the screen that it is on.
  [[nodiscard]] virtual RECT WorkArea() const = 0;
  /// Ends the program once the running handler has returned. It may be called again.
  virtual void EndProgram() = 0;

 protected:
  ~MainForm() = default;
};

/// The About window. It owns the tray icon and the menu, and receives the icon's messages. The first UpdateMoonIcon
/// creates it; closing only hides it. Its controls are made when it is first shown. It is not a message-only window:
/// that would get no broadcast of a new task bar, and no foreground for the menu.
class frmAbout final : public forms::Window<frmAbout> {
 public:
  static constexpr const wchar_t* kWindowClass = L"TidewellAbout";

  /// Makes no window yet.
  explicit frmAbout(MainForm& mainForm) : mainForm_(mainForm) {}
  ~frmAbout() { Destroy(); }

  /// Adds (Value 0), changes (1) or removes (2) the tray icon, with the tip that the report left in TrayIconData.
  ///
  /// Given:   IcoNum  index of the picture, 0..27
  /// Written: IcoNum  0 for 28 or more: the last sliver of the lunation shows the picture of the New Moon
  /// Errors:  340 Control array element doesn't exist for an IcoNum below 0
  ///          7 Out of memory if the window, the menu or the picture of a new icon cannot be made
  ///
  /// Removes nothing if no icon was added. If the new picture cannot be made, a change keeps the old one.
  void UpdateMoonIcon(const std::int32_t& Value, std::int16_t& IcoNum);

  /// Whether the icon stands in the tray, by the shell's last answer.
  [[nodiscard]] bool IconStands() const noexcept { return notifier_.IconStands(); }

 private:
  friend Window<frmAbout>;

  /// The controls, made when the window is first shown.
  struct Controls {
    explicit Controls(HWND form);
    forms::Control lblTitle, lblDescription, cmdOK;
    std::vector<forms::Control> picMoon;
  };

  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  void Load();
  void MakeControls();
  HICON Picture(int index);
  void OnCommand(int id);
  void PopupMenu();
  /// Ends the open menu if the user is in another program: clicks and Escape would never reach it.
  void EndMenuLeftBehind();

  void cmdOK_Click();
  void Form_Unload(bool& Cancel);
  void Form_MouseMove(int Button, int Shift, double X, double Y);
  void mnuAbout_Click();
  void mnuShow_Click();
  void mnuExit_Click();

  MainForm& mainForm_;
  UINT taskbarCreated_ = 0;
  std::array<runtime::unique_icon, frmAboutLayout::kPicMoonCount> pictures_;
  runtime::unique_menu mFile;
  std::optional<Controls> controls_;
  forms::FocusKeeper focus_;
  forms::TwipsPerPixel twipsPerPixel_{};
  ShellNotifier notifier_;
  bool menuOpen_ = false;
  HWND taskBar_ = nullptr;      ///< the task bar, if it may keep the foreground while the menu is open
  bool makingTopmost_ = false;  ///< while Form_MouseMove makes the window topmost
};

}  // namespace tidewell

namespace mMoon {

/// The last message of the icon that Form_MouseMove decoded.
inline std::int32_t MouseMsg = 0;

}  // namespace mMoon
