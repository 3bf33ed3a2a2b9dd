// Takes any double apart as a date, and makes dates of any parts.
// Input: two dates (doubles), year, month, day, hours, minutes, seconds (16 bits each).

#include <chrono>

#include "fuzz/fuzzing.h"
#include "runtime/date_value.h"
#include "runtime/locale_names.h"

using namespace fuzzing;
using namespace runtime;

namespace {

constexpr double kHalfSecond = 0.5 / 86400;

void TakenApart(DateValue date) {
  DateParts parts{};
  const auto error = ErrorOf([&] { parts = PartsOf(date); });
  RequireArithmetic(error);
  // Rounding may lead out of the calendar in the half second at either end.
  Require(error || Within(-657435, date, 2958466), "a date of the years 100 to 9999");
  if (error) {
    Require(!Within(-657434, date, 2958465.9999), "every date of the years 100 to 9999 has its parts");
    return;
  }
  Require(Within(100, parts.year, 9999) && Within(1, parts.month, 12) && Within(1, parts.day, 31), "a day");
  Require(Within(0, parts.hour, 23) && Within(0, parts.minute, 59) && Within(0, parts.second, 59), "a time");
  const DateValue whole =
      AddTime(DateSerial(parts.year, parts.month, parts.day), parts.hour, parts.minute, parts.second);
  Require(std::fabs(whole - date) <= kHalfSecond + 1e-9, "the nearest second");

  const LocaleNames locale;
  Require(DateText(date, locale).size() == 9, "dd-mmm-yy");
  const std::wstring time = TimeText(date, locale);
  Require(Within(7, static_cast<double>(time.size()), 8), "h:mm AM");
  Require(time.ends_with(parts.hour < 12 ? L"AM" : L"PM"), "the half of the day");
  const DateParts magnitude = PartsOf(std::fabs(date));
  const std::wstring hours = HoursText(date);
  Require(std::stoi(hours) == magnitude.hour && std::stoi(hours.substr(hours.find(L':') + 1)) == magnitude.minute,
          "h:mm");
  Require(SameMinute(date, AddTime(whole, 0, 0, -parts.second)), "the second is not looked at");
  Require(!SameMinute(date, AddTime(whole, 0, 1)), "the next minute is another one");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  Input input(bytes, size);
  const auto a = input.Take<DateValue>();
  const auto b = input.Take<DateValue>();
  TakenApart(a);
  bool same = false;
  bool sameBack = false;
  const auto error = ErrorOf([&] { same = SameMinute(a, b); });
  const auto errorBack = ErrorOf([&] { sameBack = SameMinute(b, a); });
  RequireArithmetic(error);
  Require(error.has_value() == errorBack.has_value() && same == sameBack, "the same minute from both sides");
  RequireArithmetic(ErrorOf([&] { (void)TimeText(a, {}); }));
  RequireArithmetic(ErrorOf([&] { (void)HoursText(a); }));

  const auto year = input.Take<std::int16_t>();
  const int month = static_cast<std::uint16_t>(input.Take<std::int16_t>()) % 12 + 1;
  const auto day = input.Take<std::int16_t>();
  const auto hours = input.Take<std::int16_t>();
  const auto minutes = input.Take<std::int16_t>();
  const auto seconds = input.Take<std::int16_t>();
  DateValue date = 0;
  const auto serialError = ErrorOf([&] { date = DateSerial(year, month, day); });
  const std::chrono::sys_days firstOfMonth =
      std::chrono::year{year} / std::chrono::month{static_cast<unsigned>(month)} / std::chrono::day{1};
  const std::chrono::year_month_day want = firstOfMonth + std::chrono::days{day - 1};
  const bool inCalendar = Within(100, year, 9999) && Within(100, static_cast<int>(want.year()), 9999);
  Require(serialError.has_value() != inCalendar, "years 100 to 9999");
  RequireArithmetic(serialError);
  Require(date == std::floor(date), "0 h");
  const double timed = AddTime(date, hours, minutes, seconds);
  Require(std::fabs(timed - date - ((hours * 60.0 + minutes) * 60 + seconds) / 86400) < 1e-8, "time is added");
  return 0;
}
