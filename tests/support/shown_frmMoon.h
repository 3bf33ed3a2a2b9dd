#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "report/frmMoon.h"
#include "report/moon_report.h"
#include "runtime/program_folder.h"
#include "support/scratch_file_win.h"

/// The main window, loaded and shown, at an instant of the test's.
class ShownMoon : public testing::Test {
 protected:
  ShownMoon() {
    zone = {};
    Load();
  }

  /// Loads the window as the program's start does. May be called again.
  void Load() {
    form_.reset();
    form_ = std::make_unique<tidewell::frmMoon>();
    mMoon::OffsetMinutes = 0;
    tidewell::surroundings = {.frmMoon = form_.get(), .Now = [] { return now; }, .ReadTimeZone = [] { return zone; }};
    form_->Load();
    form_->Show();
  }

  tidewell::frmMoon& form() { return *form_; }

  void Repaint() { RedrawWindow(form().hwnd(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW); }

  COLORREF Pixel(int x, int y) {
    const HDC dc = GetDC(form().hwnd());
    const COLORREF colour = GetPixel(dc, x, y);
    ReleaseDC(form().hwnd(), dc);
    return colour;
  }

  static inline runtime::DateValue now = runtime::AddTime(runtime::DateSerial(2026, 11, 21), 3, 40);
  static inline runtime::TimeZoneReading zone{};

  ScratchFile settingsFile_{runtime::ProgramFolder() + L"\\vesk.dat"};
  std::unique_ptr<tidewell::frmMoon> form_;
};
