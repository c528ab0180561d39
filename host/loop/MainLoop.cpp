#include "host/loop/MainLoop.hpp"

#include <deque>
#include <mutex>
#include <thread>
#include <utility>

#include "linux/handles/OwnedSource.hpp"

namespace nivlo {

namespace {

/// Keeps the work in a queue with its own lock and only asks GLib to wake up for it: ThreadSanitizer cannot
/// see GLib's own locks and would report every hand-over as a race.
class GLibMainQueue : public MainQueueDriver {
 public:
  GLibMainQueue() {
    static GSourceFuncs functions{};
    functions.dispatch = [](GSource*, GSourceFunc callback, gpointer data) { return callback(data); };
    source_.reset(g_source_new(&functions, sizeof(GSource)));
    g_source_set_callback(source_.get(), runOne, this, nullptr);
    // Work may run a nested loop in which it waits for other work, as toolkits do.
    g_source_set_can_recurse(source_.get(), TRUE);
    g_source_attach(source_.get(), nullptr);
  }

  void post(std::function<void()> work) override {
    const std::lock_guard lock(mutex_);
    work_.push_back(std::move(work));
    g_source_set_ready_time(source_.get(), kNow);
  }

  bool isMainThread() const override { return std::this_thread::get_id() == thread_; }

 private:
  static constexpr gint64 kNow = 0;
  static constexpr gint64 kNever = -1;

  /// Runs one piece of work for each turn of the loop, so that a long queue does not starve other events.
  static gboolean runOne(gpointer data) {
    auto& queue = *static_cast<GLibMainQueue*>(data);
    std::function<void()> work;
    {
      const std::lock_guard lock(queue.mutex_);
      if (!queue.work_.empty()) {
        work = std::move(queue.work_.front());
        queue.work_.pop_front();
      }
      g_source_set_ready_time(queue.source_.get(), queue.work_.empty() ? kNever : kNow);
    }
    if (work) {
      work();
    }
    return G_SOURCE_CONTINUE;
  }

  std::mutex mutex_;
  std::deque<std::function<void()>> work_;
  OwnedSource source_;
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
