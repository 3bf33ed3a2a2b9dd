// Tests the run-time error box, in a program of its own: a process ends only once.

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "runtime/end_on_error.h"
#include "runtime/runtime_error.h"
#include "support/system_stand_in_win.h"

extern "C" decltype(&FatalAppExitA) fatalAppExitSlot asm("__imp__FatalAppExitA@8");
extern "C" decltype(&MessageBoxA) messageBoxSlot asm("__imp__MessageBoxA@16");

namespace {

std::vector<std::string> boxes;

int WINAPI NoteBox(HWND owner, LPCSTR text, LPCSTR caption, UINT type) {
  EXPECT_EQ(owner, nullptr);
  EXPECT_STREQ(caption, "Tidewell");
  EXPECT_EQ(type, UINT{MB_OK | MB_ICONERROR | MB_TASKMODAL | MB_SETFOREGROUND | MB_TOPMOST});
  boxes.emplace_back(text);
  return IDOK;
}

void WINAPI NoteFatalExit(UINT, LPCSTR text) { boxes.emplace_back(std::string("fatal: ") + text); }

void EndOn(auto exception) {
  try {
    throw exception;
  } catch (...) {
    runtime::EndOnCurrentException();
  }
}

TEST(RunTimeBox, ShowsTheFirstOfSeveralErrors) {
  const SystemStandIn standIn(messageBoxSlot, &NoteBox);
  EXPECT_EQ(runtime::ReportRuntimeError(), 0);
  EXPECT_TRUE(boxes.empty()) << "there was no error";
  EXPECT_FALSE(runtime::Ending());

  EndOn(std::bad_alloc());
  EXPECT_TRUE(runtime::Ending());
  EXPECT_TRUE(boxes.empty()) << "no box in the middle of a handler";
  EndOn(runtime::RuntimeError(runtime::ErrorNumber::DiskFull));
  EndOn(std::logic_error("any other"));

  EXPECT_EQ(runtime::ReportRuntimeError(), 1);
  EXPECT_EQ(boxes, std::vector<std::string>{"Run-time error '7':\n\nOut of memory"});

  const Refused<messageBoxSlot, 0> refused;
  const SystemStandIn fatalExit(fatalAppExitSlot, &NoteFatalExit);
  EXPECT_EQ(runtime::ReportRuntimeError(), 1);
  EXPECT_EQ(boxes.back(), "fatal: " + boxes.front());
}

}  // namespace
