// Fuzzes the report: any instant of the years 100 to 9999, any offset, and a clock that may be set while it runs. The
// result is a whole report or an error of arithmetic. A broken rule or any other exception ends the process, and the
// fuzzer reports the input.

#undef NDEBUG  // the rules are assertions

#include <fuzzer/FuzzedDataProvider.h>

#include <bit>
#include <cassert>
#include <cstdint>
#include <string>

#include "astro/mMoon.h"
#include "report/moon_report.h"
#include "runtime/runtime_error.h"
#include "support/report_stage.h"
#include "tray/icon_number.h"
#include "tray/shell_record.h"

using namespace mMoon;
using namespace runtime;
using namespace tidewell;

namespace {

constexpr double kFirstDay = -657434;  // 1 January 100
constexpr double kLastDay = 2958465;   // 31 December 9999
constexpr double kYear = 366;

/// False for a NaN.
bool Within(double low, double value, double high) { return low <= value && value <= high; }

bool Contains(const std::wstring& text, const wchar_t* part) { return text.find(part) != std::wstring::npos; }

/// A pair has one line of each phase, both with one prefix, and each ends with the time.
void CheckPair(const std::wstring& upper, const std::wstring& lower) {
  const bool fullFirst = Contains(upper, L" Full Moon : ");
  assert(Contains(fullFirst ? upper : lower, L" Full Moon : "));
  assert(Contains(fullFirst ? lower : upper, L" New Moon : "));
  assert(upper.substr(0, 4) == lower.substr(0, 4));
  for (const std::wstring& line : {upper, lower}) {
    assert(line.ends_with(L"AM") || line.ends_with(L"PM"));
  }
}

void CheckReport(const support::RecordingForm& form) {
  CheckPair(form.lines[0], form.lines[1]);
  CheckPair(form.lines[2], form.lines[3]);
  assert(form.lines[0].starts_with(L"Last "));
  assert(form.lines[2].starts_with(L"Next ") || form.lines[2].starts_with(L"New "));
  assert(form.label1.size() == 8 && form.label1 <= L"1.000000");
  assert(form.drawing.Primitives().size() == 5);
  assert(Within(0, IconNumber, 28) && IcoNumFromIconNumber() == IconNumber);
  const std::wstring tip(TrayIconData.szTip.begin(), TrayIconData.szTip.end());
  assert(tip.starts_with(L"Moon's Age - ") && Contains(tip, L" Days ") && tip.ends_with(L' '));
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
    CheckReport(stage.form);
  } catch (const RuntimeError& error) {
    using enum ErrorNumber;
    assert(error.number() == Overflow || error.number() == InvalidProcedureCall || error.number() == DivisionByZero);
    // Near the ends of the calendar a phase may be outside it.
    const auto inside = [](double date) { return Within(kFirstDay + kYear, date, kLastDay - kYear); };
    assert(!(inside(now) && inside(second) && Within(-32708, OffsetMinutes, 32707)));
  }
  return 0;
}
