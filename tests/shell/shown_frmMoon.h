#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "forms/clock.h"
#include "forms/handle.h"
#include "forms/locale_names.h"
#include "forms/program_folder.h"
#include "report/frmMoon.h"
#include "report/moon_report.h"
#include "report/settings_file.h"
#include "tests/shell/scratch_file.h"

/// The main window, loaded and shown, at an instant that the test sets.
class ShownMoon : public testing::Test {
 protected:
  ShownMoon() { Load(); }
  ~ShownMoon() override {
    form_.reset();
    mMoon::CloseSettingsFile();
  }

  /// Loads the window as the program's start does, again if it stood already.
  void Load() {
    form_.reset();
    mMoon::CloseSettingsFile();
    form_ = std::make_unique<mMoon::frmMoon>();
    mMoon::OffsetMinutes = 0;
    mMoon::Surroundings = {
        .frmMoon = form_.get(), .Now = [] { return now; }, .ReadLocale = [] { return forms::LocaleNames{}; }};
    form_->Load();
    form_->Show();
  }

  mMoon::frmMoon& form() { return *form_; }

  void Repaint() { RedrawWindow(form().hwnd(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW); }

  COLORREF Pixel(int x, int y) {
    const HDC dc = GetDC(form().hwnd());
    const COLORREF colour = GetPixel(dc, x, y);
    ReleaseDC(form().hwnd(), dc);
    return colour;
  }

  static inline forms::DateValue now = forms::AddTime(forms::DateSerial(2026, 11, 21), 3, 40);

  ScratchFile settingsFile_{forms::ProgramFolder() + L"\\vesk.dat"};
  std::unique_ptr<mMoon::frmMoon> form_;
};
