#include "platform/Foundation/NSThread.hpp"

#include <algorithm>
#include <thread>
#include <utility>

#include <pthread.h>

#include "platform/Foundation/Dispatch.hpp"

namespace nivlo {

namespace {

constexpr std::size_t kLongestSystemName = 15;  // bytes, pthread_setname_np(3)

// Initialisers run on the program's first thread.
const std::thread::id kFirstThread = std::this_thread::get_id();

std::string systemName(const std::string& name) {
  std::size_t length = std::min(name.size(), kLongestSystemName);
  const auto isInsideCharacter = [&] { return (static_cast<unsigned char>(name[length]) & 0xC0) == 0x80; };
  while (length > 0 && isInsideCharacter()) {
    --length;
  }
  return name.substr(0, length);
}

}  // namespace

NSThread& NSThread::currentThread() {
  thread_local NSThread thread;
  return thread;
}

bool NSThread::isMainThread() { return nivlo::isMainThread(); }

void NSThread::setName(std::optional<std::string> name) {
  name_ = std::move(name);
  if (std::this_thread::get_id() != kFirstThread) {
    pthread_setname_np(pthread_self(), systemName(name_.value_or("")).c_str());
  }
}

}  // namespace nivlo
