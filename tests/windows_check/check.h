#pragma once

#include <string>
#include <utility>
#include <vector>

#include "windows_check/stage.h"

namespace check {

/// The result of a check. Whatever finds that a check cannot continue throws it.
struct Outcome {
  enum class Kind { Ok, Failed, NotHere } kind;
  std::wstring text;
};

/// Good; with what was seen, if that is worth reporting.
[[nodiscard]] inline Outcome Ok(std::wstring seen = L"") { return {Outcome::Kind::Ok, std::move(seen)}; }

/// This machine cannot tell.
[[nodiscard]] inline Outcome NotHere(std::wstring why) { return {Outcome::Kind::NotHere, std::move(why)}; }

[[nodiscard]] inline Outcome Failed(const std::wstring& wanted, const std::wstring& got) {
  return {Outcome::Kind::Failed, L"wanted " + wanted + L", got " + got};
}

/// Ok if both texts are the same.
[[nodiscard]] inline Outcome Same(const std::wstring& wanted, const std::wstring& got) {
  return wanted == got ? Ok() : Failed(L"'" + wanted + L"'", L"'" + got + L"'");
}

/// Compares several facts; all differences make one outcome.
class Facts {
 public:
  void Want(const std::wstring& fact, const std::wstring& wanted, const std::wstring& got) {
    if (wanted != got) {
      wanted_ += (wanted_.empty() ? L"" : L"; ") + fact + L" " + wanted;
      got_ += (got_.empty() ? L"" : L"; ") + got;
    }
  }
  void Want(const std::wstring& fact, long long wanted, long long got) {
    Want(fact, std::to_wstring(wanted), std::to_wstring(got));
  }
  [[nodiscard]] Outcome Result(std::wstring seen = L"") const {
    return wanted_.empty() ? Ok(std::move(seen)) : Failed(wanted_, got_);
  }

 private:
  std::wstring wanted_, got_;
};

struct Check {
  const wchar_t* name;
  Outcome (*run)(const Stage& stage);
};

/// The groups, in their order.
std::vector<Check> StartChecks();
std::vector<Check> ReportChecks();
std::vector<Check> WindowChecks();
std::vector<Check> PictureChecks();
std::vector<Check> TrayChecks();
std::vector<Check> MenuChecks();
std::vector<Check> OptionChecks();
std::vector<Check> EndingChecks();
std::vector<Check> CostChecks();

}  // namespace check
