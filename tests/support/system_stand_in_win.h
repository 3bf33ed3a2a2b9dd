#pragma once

#include <windows.h>

/// Puts a function of the test in the place of one of the system's, for this program and the time of the scope. The
/// slot is where the linker keeps the address of the system's function:
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
