#include "files/file_descriptor.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <utility>

namespace trellivar {
namespace {

int openSomething() { return ::open("/dev/null", O_RDONLY | O_CLOEXEC); }

bool isOpen(int number) { return ::fcntl(number, F_GETFD) != -1; }

TEST(FileDescriptor, closesAtTheEndOfItsLife) {
  const int number = openSomething();
  {
    const FileDescriptor descriptor(number);
    EXPECT_TRUE(descriptor.isOpen());
    EXPECT_TRUE(isOpen(number));
  }
  EXPECT_FALSE(isOpen(number));
}

TEST(FileDescriptor, isNotOpenAfterAFailure) { EXPECT_FALSE(FileDescriptor(-1).isOpen()); }

TEST(FileDescriptor, leavesClosingToWhoTakesItBack) {
  const int number = openSomething();
  {
    FileDescriptor descriptor(number);
    EXPECT_EQ(descriptor.release(), number);
    EXPECT_FALSE(descriptor.isOpen());
  }
  EXPECT_TRUE(isOpen(number));
  ::close(number);
}

TEST(FileDescriptor, handsOverWhenMoved) {
  const int number = openSomething();
  FileDescriptor from(number);
  const FileDescriptor to(std::move(from));
  EXPECT_EQ(to.get(), number);
  EXPECT_TRUE(isOpen(number));
}

TEST(FileDescriptor, closesWhatItHeldWhenAssigned) {
  const int first = openSomething();
  const int second = openSomething();
  FileDescriptor descriptor(first);
  descriptor = FileDescriptor(second);
  EXPECT_EQ(descriptor.get(), second);
  EXPECT_FALSE(isOpen(first));
  EXPECT_TRUE(isOpen(second));
}

} // namespace
} // namespace trellivar
