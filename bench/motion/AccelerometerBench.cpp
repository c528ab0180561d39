// Measures what a sample of the accelerometer costs. The wallpaper takes ten per second.
#include <fstream>

#include <benchmark/benchmark.h>

#include "linux/motion/iio/IIOSensor.hpp"
#include "tests/support/TemporaryDirectory.hpp"

namespace {

/// Reads ordinary files, so this is the cost of the program's own part without the hardware's.
void sample(benchmark::State& state) {
  const nivlo::test::TemporaryDirectory directory;
  for (const char* attribute : {"in_accel_x_raw", "in_accel_y_raw", "in_accel_z_raw"}) {
    std::ofstream(directory.path() / attribute) << "-1234\n";
  }
  std::ofstream(directory.path() / "in_accel_scale") << "0.000598\n";
  const nivlo::IIOSensor sensor(directory.path(), "0, 1, 0; -1, 0, 0; 0, 0, 1");
  for ([[maybe_unused]] auto turn : state) {
    auto taken = sensor.sample();
    if (taken.error) {
      state.SkipWithError("the sensor cannot be read");
      return;
    }
    benchmark::DoNotOptimize(taken);
  }
}
BENCHMARK(sample)->Unit(benchmark::kMicrosecond);

}  // namespace
