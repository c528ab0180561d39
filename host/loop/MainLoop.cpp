#include "host/loop/MainLoop.hpp"

#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace nivlo {

namespace {

/// The work is handed over under a lock of its own; GLib is only asked to wake up for it.
class GLibMainQueue : public MainQueueDriver {
 public:
  void post(std::function<void()> work) override {
    {
      const std::lock_guard lock(pending_->mutex);
      pending_->work.push_back(std::move(work));
    }
    g_idle_add_full(G_PRIORITY_DEFAULT, runOne, new std::shared_ptr<Pending>(pending_),
                    [](gpointer data) { delete static_cast<std::shared_ptr<Pending>*>(data); });
  }

  bool isMainThread() const override { return std::this_thread::get_id() == thread_; }

 private:
  struct Pending {
    std::mutex mutex;
    std::deque<std::function<void()>> work;
  };

  static gboolean runOne(gpointer data) {
    auto& pending = **static_cast<std::shared_ptr<Pending>*>(data);
    std::function<void()> work;
    {
      const std::lock_guard lock(pending.mutex);
      work = std::move(pending.work.front());
      pending.work.pop_front();
    }
    work();
    return G_SOURCE_REMOVE;
  }

  std::shared_ptr<Pending> pending_ = std::make_shared<Pending>();
  std::thread::id thread_ = std::this_thread::get_id();
};

}  // namespace

MainLoop::MainLoop() : loop_(g_main_loop_new(nullptr, FALSE)) {}

MainLoop::~MainLoop() { g_main_loop_unref(loop_); }

void MainLoop::run() {
  if (!quitting_) {
    g_main_loop_run(loop_);
  }
}

void MainLoop::quit() {
  quitting_ = true;
  g_main_loop_quit(loop_);
}

std::unique_ptr<MainQueueDriver> MainLoop::makeMainQueue() { return std::make_unique<GLibMainQueue>(); }

void MainLoop::drain() {
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
}

}  // namespace nivlo
