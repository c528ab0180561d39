#include "platform/Foundation/NSThread.hpp"

#include "platform/Foundation/Dispatch.hpp"

namespace nivlo {

NSThread& NSThread::currentThread() {
  thread_local NSThread thread;
  return thread;
}

bool NSThread::isMainThread() { return nivlo::isMainThread(); }

}  // namespace nivlo
