#pragma once

#include <array>

#include "forms/form_description.h"
#include "version.h"

/// The main window as it is designed. Places and sizes in twips; those of the check boxes are relative to the frame,
/// which clips them.
namespace tidewell::frmMoonLayout {

inline constexpr const wchar_t* kCaption = L"" TIDEWELL_NAME;
inline constexpr int kClientWidth = 3855;
inline constexpr int kClientHeight = 5130;

inline constexpr forms::FontDescription kLineFont = {.face = L"Arial", .points = 9.75, .bold = true};

/// A member of a control array has the id of its array plus its index.
enum Id : int { kCheck1 = 100, kCommand1 = 110, kFrame1 = 120, kLblMoon = 130, kLabel1 = 140 };

inline constexpr int kCommand1Index = 1;  ///< of the only member, "Close"

inline constexpr forms::ControlDescription kFrame1Description = {
    .kind = forms::ControlKind::Frame, .id = kFrame1, .caption = L"", .place = {90, 3690, 3645, 855}};

/// In tab order. On purpose the frame cuts most of Check1(1) off; its option is only stored.
inline constexpr auto kCheck1Descriptions = std::to_array<forms::ControlDescription>({
    {.kind = forms::ControlKind::CheckBox,
     .id = kCheck1 + 0,
     .caption = L"Restore in System Tray",
     .place = {180, 180, 2595, 255}},
    {.kind = forms::ControlKind::CheckBox,
     .id = kCheck1 + 1,
     .caption = L"Automatically Start at Start-up",
     .place = {3300, 480, 2955, 255},
     .enabled = false},
    {.kind = forms::ControlKind::CheckBox,
     .id = kCheck1 + 2,
     .caption = L"Enable Southern Hemisphere View",
     .place = {180, 480, 2955, 255}},
});

inline constexpr forms::ControlDescription kCommand1Description = {.kind = forms::ControlKind::Button,
                                                                   .id = kCommand1 + kCommand1Index,
                                                                   .caption = L"Close",
                                                                   .place = {2700, 4680, 1065, 345}};

/// The widest text of a line: the window's width less a margin of 2 pixels at 96 dpi on either side.
inline constexpr int kWidestText = kClientWidth - 2 * 30;

/// One of the four lines, 300 twips apart. They start left of the client area, so that their centre is the window's.
constexpr forms::ControlDescription LineDescription(int index, const wchar_t* caption) {
  return {.kind = forms::ControlKind::Label,
          .id = kLblMoon + index,
          .caption = caption,
          .place = {-210, 2520 + 300 * index, 4275, 255},
          .font = kLineFont,
          .centred = true};
}

/// The caption of the second is a placeholder until the first report.
inline constexpr auto kLblMoonDescriptions = std::to_array(
    {LineDescription(0, L""), LineDescription(1, L"sss"), LineDescription(2, L""), LineDescription(3, L"")});

/// Kept up to date with the dark fraction, never seen.
inline constexpr forms::ControlDescription kLabel1Description = {.kind = forms::ControlKind::Label,
                                                                 .id = kLabel1,
                                                                 .caption = L"Label1",
                                                                 .place = {90, 120, 1035, 255},
                                                                 .visible = false};

inline constexpr unsigned kTimerInterval = 1000;  ///< ms, of both timers

}  // namespace tidewell::frmMoonLayout
