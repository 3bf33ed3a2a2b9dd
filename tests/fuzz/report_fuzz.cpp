// The whole report at any instant of the years 100 to 9999, any offset, any clock bits.

#include "fuzz/fuzz_form.h"
#include "fuzz/fuzz_input.h"
#include "tray/tray_icon_data.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  static double now;
  static FuzzForm form;
  form.linesWritten = 0;
  mMoon::Surroundings = {
      .frmMoon = &form, .Now = [] { return now; }, .ReadLocale = [] { return forms::LocaleNames{}; }};
  const bool tame = input.Between(0, 3) != 0;
  now = tame ? forms::AddTime(forms::DateSerial(input.Between(100, 9999), input.Between(1, 12), input.Between(1, 31)),
                              input.Between(0, 23), input.Between(0, 59), input.Between(0, 59))
             : input.Any<double>();
  mMoon::OffsetMinutes = input.Between(0, 1) == 0 ? input.Between(-900, 900) : input.Any<double>();
  MayRaise([] {
    mMoon::UpdateMoonReport();
    Require(form.linesWritten == 4 || form.linesWritten == 6, "four lines, two of them perhaps corrected");
    Require(mMoon::TrayIconData.szTip[0] == L'M', "a tip");
  });
  return 0;
}
