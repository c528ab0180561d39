// Measures lines per second into a file that is flushed after every line and rolled at 1 MiB, by our logger
// and, for comparison, by spdlog. Both write to the disk that TMPDIR is on, and neither to the console.
#include <memory>
#include <string_view>
#include <utility>

#include <benchmark/benchmark.h>
#include <spdlog/logger.h>
#include <spdlog/sinks/rotating_file_sink.h>

#include "kit/MFLog/MFLoggerImpl.hpp"
#include "platform/drivers/Drivers.hpp"
#include "tests/support/TemporaryDirectory.hpp"

namespace {

constexpr std::string_view kMessage = "camera: the stream of the back camera ended: the device is gone";

struct NoLog : nivlo::LogSink {
  void write(std::string_view, std::string_view) override {}
};

std::unique_ptr<nivlo::test::TemporaryDirectory> directory;

std::shared_ptr<nivlo::MFLoggerImpl> logger;

void startLogger(const benchmark::State&) {
  directory = std::make_unique<nivlo::test::TemporaryDirectory>();
  logger = nivlo::MFLoggerImpl::init(directory->path() / "Logs");
}

void stopLogger(const benchmark::State&) {
  logger.reset();
  directory.reset();
}

void logger_line(benchmark::State& state) {
  for (auto _ : state) {
    logger->writeMessage(kMessage, 3);
  }
  state.SetItemsProcessed(state.iterations());
}

std::shared_ptr<spdlog::logger> reference;

void startReference(const benchmark::State&) {
  directory = std::make_unique<nivlo::test::TemporaryDirectory>();
  reference = std::make_shared<spdlog::logger>(
      "reference",
      std::make_shared<spdlog::sinks::rotating_file_sink_mt>(directory->path() / "log.txt", 1'048'576, 1));
  reference->set_pattern("<%L> %b %d %H:%M:%S [%t] %v");
  reference->flush_on(spdlog::level::trace);
}

void stopReference(const benchmark::State&) {
  reference.reset();
  directory.reset();
}

void spdlog_line(benchmark::State& state) {
  for (auto _ : state) {
    reference->error(kMessage);
  }
  state.SetItemsProcessed(state.iterations());
}

BENCHMARK(logger_line)->Setup(startLogger)->Teardown(stopLogger)->Threads(1)->Threads(8)->UseRealTime();
BENCHMARK(spdlog_line)->Setup(startReference)->Teardown(stopReference)->Threads(1)->Threads(8)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
  nivlo::Drivers drivers;
  drivers.logSink = std::make_unique<NoLog>();
  nivlo::installDrivers(std::move(drivers));
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 1;
  }
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
