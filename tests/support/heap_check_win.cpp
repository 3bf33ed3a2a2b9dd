// Checks the process's heaps after each test.

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <vector>

namespace {

class HeapCheck : public testing::EmptyTestEventListener {
  void OnTestEnd(const testing::TestInfo& /*test*/) override {
    std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr));
    heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
    EXPECT_TRUE(std::ranges::all_of(heaps, [](HANDLE heap) { return HeapValidate(heap, 0, nullptr) != FALSE; }))
        << "something wrote beside a heap block or into a freed one";
  }
};

const bool appended = [] {
  testing::UnitTest::GetInstance()->listeners().Append(new HeapCheck);
  return true;
}();

}  // namespace
