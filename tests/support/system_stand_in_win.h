#pragma once

#include <windows.h>

/// Replaces a system function by one of the test's, in this program, for its lifetime. The slot is where the linker
/// keeps the system function's address:
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
