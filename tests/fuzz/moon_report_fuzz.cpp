// The report at any instant of the years 100 to 9999, with any offset. The clock may be set while the report runs. The
// result is a whole report or an error of arithmetic; the process ends on any other exception.

#include <fuzzer/FuzzedDataProvider.h>

#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "astro/mMoon.h"
#include "report/moon_report.h"
#include "runtime/runtime_error.h"
#include "support/report_stage.h"
#include "tray/icon_number.h"
#include "tray/tray_icon_record.h"

using namespace mMoon;
using namespace runtime;
using namespace tidewell;

namespace {

constexpr double kFirstDay = -657434;  // 1 January 100
constexpr double kLastDay = 2958465;   // 31 December 9999
constexpr double kYear = 366;

/// Ends the process if a rule is broken. The fuzzer then reports the input.
void Require(bool holds, const char* rule) {
  if (!holds) {
    std::fprintf(stderr, "broken rule: %s\n", rule);
    std::abort();
  }
}

/// False for a NaN.
bool Within(double low, double value, double high) { return low <= value && value <= high; }

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

/// The fuzzer calls this. 0 means that the input may be kept.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);
int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  FuzzedDataProvider input(bytes, size);
  const double now = input.ConsumeFloatingPointInRange(kFirstDay, kLastDay);
  const double second = now + input.ConsumeIntegral<std::int16_t>();
  const double third = second + input.ConsumeIntegral<std::int16_t>();
  OffsetMinutes = std::bit_cast<double>(input.ConsumeIntegral<std::uint64_t>());
  TrayIconData.SetTip(L"");

  support::ReportStage stage({now, second, third});
  stage.form.southernView = input.ConsumeBool();
  try {
    UpdateMoonReport();
    RequireReport(stage.form);
  } catch (const RuntimeError& error) {
    Require(error.number() == ErrorNumber::Overflow || error.number() == ErrorNumber::InvalidProcedureCall ||
                error.number() == ErrorNumber::DivisionByZero,
            "an error of arithmetic is 5, 6 or 11");
    // The phases may be weeks away from the clock.
    const auto inside = [](double date) { return Within(kFirstDay + kYear, date, kLastDay - kYear); };
    Require(!(inside(now) && inside(second) && Within(-32708, OffsetMinutes, 32707)),
            "within the calendar the report has no error");
  }
  return 0;
}
