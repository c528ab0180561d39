#include "linux/motion/ScriptedAccelerometer.hpp"

#include <condition_variable>
#include <fstream>
#include <mutex>
#include <sstream>
#include <thread>
#include <utility>
#include <vector>

#include "platform/Foundation/NSThread.hpp"

namespace nivlo {

namespace {

struct ScriptedReading {
  double seconds = 0;
  CMAcceleration acceleration;
};

using Script = std::vector<ScriptedReading>;

class ScriptedStream : public AccelerometerStream {
 public:
  ScriptedStream(Script script, std::function<void(const AccelerometerReading&)> handler)
      : thread_([script = std::move(script), handler = std::move(handler)](const std::stop_token& stop) {
          play(script, handler, stop);
        }) {}

 private:
  static void play(const Script& script, const std::function<void(const AccelerometerReading&)>& handler,
                   const std::stop_token& stop) {
    NSThread::currentThread().setName("motion");
    const auto start = std::chrono::steady_clock::now();
    std::mutex mutex;
    std::condition_variable_any stopped;
    for (const auto& reading : script) {
      const auto due = start + std::chrono::duration_cast<std::chrono::steady_clock::duration>(
                                   std::chrono::duration<double>(reading.seconds));
      std::unique_lock lock(mutex);
      stopped.wait_until(lock, stop, due, [] { return false; });
      if (stop.stop_requested()) {
        return;
      }
      handler({reading.acceleration, std::nullopt});
    }
  }

  std::jthread thread_;
};

class ScriptedAccelerometer : public AccelerometerDriver {
 public:
  explicit ScriptedAccelerometer(Script script) : script_(std::move(script)) {}

  std::unique_ptr<AccelerometerStream> start(
      std::chrono::duration<double>, std::function<void(const AccelerometerReading&)> handler) override {
    return std::make_unique<ScriptedStream>(script_, std::move(handler));
  }

 private:
  Script script_;
};

bool parseReading(const std::string& line, ScriptedReading* reading) {
  std::istringstream text(line);
  char comma1 = 0;
  char comma2 = 0;
  char comma3 = 0;
  auto& [x, y, z] = reading->acceleration;
  text >> reading->seconds >> comma1 >> x >> comma2 >> y >> comma3 >> z;
  return text && comma1 == ',' && comma2 == ',' && comma3 == ',' && (text >> std::ws).eof();
}

}  // namespace

std::unique_ptr<AccelerometerDriver> makeScriptedAccelerometer(const std::filesystem::path& path,
                                                               std::string* error) {
  std::ifstream file(path);
  if (!file) {
    *error = path.string() + ": cannot read the script; check its name and its permissions";
    return nullptr;
  }
  Script script;
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    if (line.empty() || line.starts_with('#')) {
      continue;
    }
    ScriptedReading reading;
    const double earliest = script.empty() ? 0 : script.back().seconds;
    if (!parseReading(line, &reading) || !(reading.seconds >= earliest)) {
      *error = path.string() + ":" + std::to_string(number) +
               ": expected \"SECONDS, X, Y, Z\", with seconds that are not less than on the line before";
      return nullptr;
    }
    script.push_back(reading);
  }
  return std::make_unique<ScriptedAccelerometer>(std::move(script));
}

}  // namespace nivlo
