#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "forms/controls_win.h"
#include "forms/drawing_list.h"
#include "forms/fitted_label_win.h"
#include "forms/focus_keeper_win.h"
#include "forms/paint_retry_win.h"
#include "forms/timer_win.h"
#include "forms/window_win.h"
#include "report/settings_file_win.h"
#include "report/surroundings.h"
#include "runtime/date_value.h"
#include "runtime/handle_win.h"
#include "tray/frmAbout.h"

namespace tidewell {

/// The main window: the Moon's picture, the four lines, the options, and the ways to end or hide the program.
class frmMoon final : public forms::Window<frmMoon>, public ReportForm, public MainForm {
 public:
  static constexpr const wchar_t* kWindowClass = L"TidewellMoon";

  /// Loads the icons; Load makes the window.
  frmMoon();
  ~frmMoon() { Destroy(); }

  /// Makes the window, still hidden; restores the options, makes the first report and adds the tray icon. Errors: 7 Out
  /// of memory, those of the settings file and of the report.
  void Load();

  // ReportForm, for the report and the phase drawing.
  forms::DrawingList& Drawing() override;
  void SetLabel1Caption(const std::wstring& caption) override;
  [[nodiscard]] bool SouthernView() const override;
  void SetMoonLine(std::size_t index, const std::wstring& text) override;

  // MainForm, for the tray.
  [[nodiscard]] bool Visible() const override;
  void Show() override;
  void Hide() override;
  void SetIcons(HWND window) const override;
  [[nodiscard]] RECT WorkArea() const override;

  /// Removes the tray icon, closes the settings file and ends the program once the running handler has returned.
  void EndProgram() override;

 private:
  friend Window<frmMoon>;

  /// The controls, made together with the window. Those with a tab stop are in tab order.
  struct Controls {
    Controls(HWND form, forms::PaintRetry& retry);
    forms::Frame Frame1;
    std::vector<forms::Control> Check1;
    forms::Control Command1;
    std::vector<forms::FittedLabel> lblMoon;
    forms::Control Label1;
  };
  class PictureRepaint;

  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  void StayInactiveWhileHidden(WINDOWPOS& change) const;
  void OnNotice(UINT message, WPARAM wParam, LPARAM lParam);
  void OnCommand(int id, int notification);
  void Paint();
  [[nodiscard]] RECT PicturePlace() const;
  void Refresh();
  void ReportAndUpdateIcon(TrayCommand command);
  /// Nobody can reach a hidden window without an icon: it is minimised until the icon stands again.
  void KeepInReach();

  void Form_Load();
  void Timer1_Timer();
  void Check1_Click(int Index);
  void Command1_Click();
  void Form_Unload(bool& Cancel);

  runtime::unique_icon icon_;
  runtime::unique_icon smallIcon_;
  forms::PaintRetry paintRetry_;
  std::optional<Controls> controls_;
  forms::FocusKeeper focus_;
  forms::DrawingList drawing_;
  forms::PixelScale pixelScale_;
  std::optional<SettingsFile> settingsFile_;
  frmAbout about_;
  runtime::DateValue LastUpdate = 0;  ///< clock reading at the last update made by the timer
  bool refreshAtTick_ = false;        ///< the next tick updates, even in the same minute
  bool minimisedForIcon_ = false;     ///< minimised instead of hidden
  std::optional<forms::Timer> Timer1;
};

}  // namespace tidewell
