#pragma once

#include <windows.h>

/// While it lives, this program calls the test's function instead of the system's. The slot is where the linker keeps
/// the system function's address:
///
///     extern "C" decltype(&SetTimer) setTimerSlot asm("__imp__SetTimer@16");
template <class Function>
class SystemStandIn {
 public:
  SystemStandIn(Function& slot, Function standIn) : slot_(slot), system_(slot) { Set(standIn); }
  ~SystemStandIn() { Set(system_); }
  SystemStandIn(const SystemStandIn&) = delete;
  SystemStandIn& operator=(const SystemStandIn&) = delete;

 private:
  void Set(Function function) {
    DWORD protection = 0;
    VirtualProtect(&slot_, sizeof slot_, PAGE_READWRITE, &protection);
    slot_ = function;
    VirtualProtect(&slot_, sizeof slot_, protection, &protection);
  }

  Function& slot_;
  Function system_;
};

/// While it lives, the system function behind the slot fails with this answer.
template <auto& Slot, auto Answer>
class Refused;

template <class Result, class... Arguments, Result(WINAPI*& Slot)(Arguments...), auto Answer>
class Refused<Slot, Answer> {
 public:
  /// Refuses every call.
  Refused() = default;
  /// Refuses one call only; 0 is the first one.
  explicit Refused(int call) {
    every_ = false;
    next_ = call;
  }
  ~Refused() { every_ = true; }
  Refused(const Refused&) = delete;
  Refused& operator=(const Refused&) = delete;

  /// True once the one call has been refused.
  [[nodiscard]] bool Happened() const { return next_ < 0; }

 private:
  static Result WINAPI Call(Arguments... arguments) {
    return every_ || next_-- == 0 ? static_cast<Result>(Answer) : system_(arguments...);
  }

  static inline const auto system_ = Slot;
  static inline bool every_ = true;
  static inline int next_ = 0;
  SystemStandIn<Result(WINAPI*)(Arguments...)> standIn_{Slot, &Call};
};
