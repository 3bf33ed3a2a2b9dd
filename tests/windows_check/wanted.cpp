#include "windows_check/wanted.h"

#include "report/local_time_offset.h"
#include "report/moon_report.h"
#include "report/surroundings.h"
#include "support/recording_form.h"
#include "tray/tray_icon_data.h"

namespace check {

namespace {

runtime::DateValue instant = 0;

Report ReportNow(bool southern) {
  support::RecordingForm form;
  form.southernView = southern;
  tidewell::surroundings = {.frmMoon = &form,
                            .Now = [] { return instant; },
                            .ReadTimeZone = runtime::SystemTimeZone,
                            .ReadLocale = runtime::ReadUserLocale};
  mMoon::UpdateMoonReport();
  const auto& tip = mMoon::TrayIconData.szTip;
  const std::wstring padded(tip.begin(), tip.end());
  return {.lines = form.lines,
          .label = form.label1,
          .tip = padded.substr(0, padded.find_last_not_of(L' ') + 1),
          .drawing = form.drawing};
}

}  // namespace

std::vector<Report> ReportsFor(runtime::DateValue from, runtime::DateValue to, bool withOffset, bool southern) {
  constexpr double kHalfASecond = 0.5 / 86400;
  tidewell::surroundings.ReadTimeZone = runtime::SystemTimeZone;
  mMoon::OffsetMinutes = withOffset ? mMoon::LocalTimeOffset() : 0;
  std::vector<Report> reports;
  for (instant = from; instant < to + kHalfASecond; instant = runtime::AddTime(instant, 0, 0, 1)) {
    reports.push_back(ReportNow(southern));
  }
  return reports;
}

std::wstring TextOf(const Report& report) {
  std::wstring text;
  for (const std::wstring& line : report.lines) {
    text += line + L" | ";
  }
  return text + report.label;
}

}  // namespace check
