// Moving the cursor allocates nothing: the ring of record buffers is made once per open. Every
// allocation of the test program is counted: through the sanitizer's allocation hook in the
// sanitizer build, through a replaced operator new otherwise.

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "DataSetTestSupport.h"

namespace {
size_t gAllocations = 0;
}

#if defined(__SANITIZE_ADDRESS__)
extern "C" int __sanitizer_install_malloc_and_free_hooks(
    void (*malloc_hook)(const volatile void*, size_t), void (*free_hook)(const volatile void*));
namespace {
void CountAllocation(const volatile void*, size_t) { ++gAllocations; }
[[maybe_unused]] const int gHooked = __sanitizer_install_malloc_and_free_hooks(CountAllocation, nullptr);
}  // namespace
#else
void* operator new(std::size_t size) {
  ++gAllocations;
  if (void* block = std::malloc(size ? size : 1)) return block;
  throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
// The matching releases, so that every block goes back the way it came.
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }
#endif

namespace orv::test {
namespace {

// A grid's link that only counts, so that listening allocates nothing of its own.
class TCountingLink : public TDataLink {
 public:
  TCountingLink(TDataSource* source, int bufferCount) {
    SetBufferCount(bufferCount);
    SetDataSource(source);
  }
  ~TCountingLink() override { SetDataSource(nullptr); }
  int Scrolls = 0;

 protected:
  void DataSetScrolled(int) override { ++Scrolls; }
};

TEST(DataSetAllocations, MovingTheCursorAllocatesNothing) {
  auto people = MakePeople(1000);
  TDataSource source;
  source.SetDataSet(people.get());
  TCountingLink grid(&source, 10);
  people->Open();
  TField* id = people->FieldByName("ID");
  people->MoveBy(50);
  people->First();

  int64_t sum = 0;
  const size_t before = gAllocations;
  for (int i = 0; i < 500; ++i) {
    people->Next();
    sum += id->GetAsInteger();
  }
  for (int i = 0; i < 200; ++i) people->Prior();
  people->MoveBy(300);
  people->MoveBy(-250);
  EXPECT_EQ(gAllocations - before, 0u);
  EXPECT_EQ(sum, 500 * 501 / 2 + 500);
  EXPECT_EQ(grid.Scrolls, 703);

  // Without any link, one buffer.
  source.SetDataSet(nullptr);
  const size_t unlinked = gAllocations;
  for (int i = 0; i < 100; ++i) people->Next();
  EXPECT_EQ(gAllocations - unlinked, 0u);
  EXPECT_EQ(id->GetAsInteger(), 451);
}

}  // namespace
}  // namespace orv::test
