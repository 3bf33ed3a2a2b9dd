#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace check {

class Program;
class Stage;

/// The result of a check. Whatever finds that a check cannot continue throws it.
struct Outcome {
  enum class Kind { Ok, Failed, NotHere } kind;
  std::wstring text;
};

/// Passed; with what was seen, if that is worth reporting.
[[nodiscard]] inline Outcome Ok(std::wstring seen = L"") { return {Outcome::Kind::Ok, std::move(seen)}; }

/// The check is not possible on this machine.
[[nodiscard]] inline Outcome NotHere(std::wstring why) { return {Outcome::Kind::NotHere, std::move(why)}; }

[[nodiscard]] inline Outcome Failed(const std::wstring& wanted, const std::wstring& got) {
  return {Outcome::Kind::Failed, L"wanted " + wanted + L", got " + got};
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

inline constexpr DWORD kPatience = 20000;  ///< ms; only a failing check waits that long

/// Calls the condition until it is true; returns that result. The check fails after kPatience.
template <class Condition>
auto Until(const std::wstring& what, Condition condition) {
  const DWORD start = GetTickCount();
  while (true) {
    if (auto found = condition()) {
      return found;
    }
    if (GetTickCount() - start > kPatience) {
      throw Failed(what, L"nothing of it within 20 s");
    }
    Sleep(10);
  }
}

/// A named check. Most take a Program, which is started for them.
struct Check {
  Check(const wchar_t* its, Outcome (*of)(const Stage& stage)) : name(its), run(of) {}
  Check(const wchar_t* its, Outcome (*of)(const Program& program));

  const wchar_t* name;
  std::function<Outcome(const Stage& stage)> run;
};

/// The groups, in their order.
std::vector<Check> StartChecks();
std::vector<Check> ReportChecks();
std::vector<Check> WindowChecks();
std::vector<Check> TrayChecks();
std::vector<Check> OptionChecks();
std::vector<Check> EndingChecks();
std::vector<Check> CostChecks();

}  // namespace check
