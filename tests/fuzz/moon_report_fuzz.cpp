// The report at any instant of the years 100 to 9999, with any offset. The clock may be set while the report runs.
// Input: the clock's day and part of the day (32 bits each), offset (a double), days to the clock's second and third
// reading (16 bits each), the southern view (16 bits).

#include <string>

#include "astro/mMoon.h"
#include "fuzz/fuzzing.h"
#include "report/moon_report.h"
#include "support/report_stage.h"
#include "tray/icon_number.h"
#include "tray/tray_icon_record.h"

using namespace fuzzing;
using namespace mMoon;
using namespace runtime;
using namespace tidewell;

namespace {

constexpr double kFirstDay = -657434;  // 1 January 100
constexpr double kLastDay = 2958465;   // 31 December 9999
constexpr double kYear = 366;

void RequireLines(const support::RecordingForm& form, std::size_t upper) {
  const std::wstring& one = form.lines.at(upper);
  const std::wstring& other = form.lines.at(upper + 1);
  const bool fullFirst = one.find(L" Full Moon : ") != std::wstring::npos;
  const std::wstring& first = fullFirst ? one : other;
  const std::wstring& second = fullFirst ? other : one;
  Require(first.find(L" Full Moon : ") != std::wstring::npos && second.find(L" New Moon : ") != std::wstring::npos,
          "a pair has one line of each phase");
  Require(first.substr(0, 4) == second.substr(0, 4), "a pair has one prefix");
  for (const std::wstring& line : {one, other}) {
    Require(line.ends_with(L"AM") || line.ends_with(L"PM"), "a line ends with the time");
  }
}

void RequireReport(const support::RecordingForm& form) {
  RequireLines(form, 0);
  RequireLines(form, 2);
  Require(form.lines.at(0).starts_with(L"Last "), "the last phases stand above");
  Require(form.lines.at(2).starts_with(L"Next ") || form.lines.at(2).starts_with(L"New "), "the next ones below");
  Require(form.label1.size() == 8 && form.label1 <= L"1.000000", "the dark fraction");
  Require(form.drawing.Primitives().size() == 5, "the picture");
  Require(Within(0, IconNumber, 28) && IcoNumFromIconNumber() == IconNumber, "the icon");
  const std::wstring tip(TrayIconData.szTip.begin(), TrayIconData.szTip.end());
  Require(tip.starts_with(L"Moon's Age - ") && tip.find(L" Days ") != std::wstring::npos && tip.ends_with(L' '),
          "the tip");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  Input input(bytes, size);
  const double day = kFirstDay + input.Take<std::uint32_t>() % static_cast<std::uint32_t>(kLastDay - kFirstDay + 1);
  const double now = day + std::ldexp(input.Take<std::uint32_t>(), -32);
  OffsetMinutes = input.Take<double>();
  const double second = now + input.Take<std::int16_t>();
  const double third = second + input.Take<std::int16_t>();
  const bool southern = input.Take<std::int16_t>() == -1;
  TrayIconData.SetTip(L"");

  support::ReportStage stage({now, second, third});
  stage.form.southernView = southern;
  const auto error = ErrorOf(UpdateMoonReport);
  RequireArithmetic(error);
  if (!error) {
    RequireReport(stage.form);
    return 0;
  }
  // The phases may be weeks away from the clock.
  const auto inside = [](double date) { return Within(kFirstDay + kYear, date, kLastDay - kYear); };
  Require(!(inside(now) && inside(second) && Within(-32708, OffsetMinutes, 32707)),
          "within the calendar the report has no error");
  return 0;
}
