#include "windows_check/machine.h"

#include <windows.h>

#include "support/other_windows_win.h"
#include "windows_check/screen.h"

namespace check {

namespace {

template <class Function>
Function FunctionOf(const wchar_t* library, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(library), name)));
}

/// Not by GetVersionEx, which knows only the versions that this program's manifest names.
std::wstring Version() {
  OSVERSIONINFOW version{};
  version.dwOSVersionInfoSize = sizeof version;
  if (const auto get = FunctionOf<LONG(WINAPI*)(OSVERSIONINFOW*)>(L"ntdll.dll", "RtlGetVersion")) {
    get(&version);
  }
  std::wstring text = std::to_wstring(version.dwMajorVersion) + L"." + std::to_wstring(version.dwMinorVersion) +
                      L", build " + std::to_wstring(version.dwBuildNumber);
  if (const auto wine = FunctionOf<const char*(__cdecl*)()>(L"ntdll.dll", "wine_get_version")) {
    text += L" (Wine " + support::Wide(wine()) + L")";
  }
  return text;
}

std::wstring Density() {
  const HDC screen = GetDC(nullptr);
  const int density = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return std::to_wstring(density);
}

std::wstring RealDensity() {
  const PhysicalPixels physical;
  return Density();
}

std::wstring Locale() {
  wchar_t name[LOCALE_NAME_MAX_LENGTH] = L"";
  GetUserDefaultLocaleName(name, LOCALE_NAME_MAX_LENGTH);
  return name;
}

std::wstring Zone() {
  DYNAMIC_TIME_ZONE_INFORMATION zone{};
  GetDynamicTimeZoneInformation(&zone);
  return std::wstring(zone.TimeZoneKeyName) + L", " + std::to_wstring(-zone.Bias) + L" minutes";
}

}  // namespace

std::wstring DescribeMachine() {
  return L"Windows " + Version() + L"\ndensity " + RealDensity() + L", as the program sees it " + Density() +
         L"\nlocale " + Locale() + L"\nzone " + Zone() + L"\n";
}

}  // namespace check
