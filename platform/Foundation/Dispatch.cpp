#include "platform/Foundation/Dispatch.hpp"

#include <utility>

#include "platform/Foundation/SerialWorker.hpp"
#include "platform/drivers/Drivers.hpp"

namespace nivlo {

namespace {

class SerialQueue : public DispatchQueue {
 public:
  explicit SerialQueue(std::string_view label) : label_(label), worker_(label_) {}
  void async(std::function<void()> work) override { worker_.post(std::move(work)); }
  std::string label() const override { return label_; }

 private:
  std::string label_;
  SerialWorker worker_;
};

class MainQueue : public DispatchQueue {
 public:
  void async(std::function<void()> work) override {
    if (auto& main = drivers().mainQueue) {
      main->post(std::move(work));
    }
  }
  std::string label() const override { return "main"; }
};

}  // namespace

dispatch_queue_t dispatch_queue_create(std::string_view label) {
  return std::make_shared<SerialQueue>(label);
}

dispatch_queue_t dispatch_get_main_queue() {
  static const auto queue = std::make_shared<MainQueue>();
  return queue;
}

void dispatch_async(const dispatch_queue_t& queue, std::function<void()> work) {
  if (queue) {
    queue->async(std::move(work));
  }
}

bool isMainThread() {
  const auto& main = drivers().mainQueue;
  return !main || main->isMainThread();
}

}  // namespace nivlo
