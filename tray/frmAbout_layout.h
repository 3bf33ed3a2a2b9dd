#pragma once

#include "forms/form_description.h"
#include "resources/resource_ids.h"
#include "version.h"

/// The About window as it is designed. Places and sizes in twips.
namespace tidewell::frmAboutLayout {

inline constexpr const wchar_t* kCaption = L"About Moon";
inline constexpr int kClientWidth = 4245;
inline constexpr int kClientHeight = 2055;

enum Id : int { kCmdOK = 100, kLblTitle = 110, kLblDescription = 120, kPicMoon = 200 };

inline constexpr forms::ControlDescription kLblTitleDescription = {
    .kind = forms::ControlKind::Label,
    .id = kLblTitle,
    .caption = L"" TIDEWELL_NAME " " TIDEWELL_SHORT_VERSION,
    .place = {180, 150, 3885, 480},
    .font = {.face = L"Arial", .points = 20.25, .bold = true}};

inline constexpr forms::ControlDescription kLblDescriptionDescription = {
    .kind = forms::ControlKind::Label,
    .id = kLblDescription,
    .caption = L"Developed by Quorvane Systems",
    .place = {180, 705, 3885, 660},
    .font = {.face = L"MS Sans Serif", .points = 12, .bold = false, .scalable = L"Microsoft Sans Serif"}};

inline constexpr forms::ControlDescription kCmdOKDescription = {
    .kind = forms::ControlKind::Button, .id = kCmdOK, .caption = L"OK", .place = {2820, 1470, 1260, 345}};

/// The holders of the tray's pictures lie below the client area, in rows of 14: they are never seen.
inline constexpr int kPicMoonCount = PHASE_PICTURES;
constexpr forms::ControlDescription PicMoonDescription(int index) {
  return {.kind = forms::ControlKind::PictureBox,
          .id = kPicMoon + index,
          .caption = L"",
          .place = {180 + 240 * (index % 14), 2580 + 240 * (index / 14), 240, 240},
          .visible = false};
}

/// The entries of mFile, the tray icon's pop-up menu.
inline constexpr const wchar_t* kMnuAboutCaption = L"About";
inline constexpr const wchar_t* kMnuShowCaption = L"Show Main Window";
inline constexpr const wchar_t* kMnuExitCaption = L"Exit";

}  // namespace tidewell::frmAboutLayout
