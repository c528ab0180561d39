// Options that take one of a few words.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <type_traits>

#include <CLI/App.hpp>
#include <fmt/format.h>

namespace nivlo {

/// A word that an option takes, and the value that it stands for. One array of these decides what the option
/// accepts, what its help lists, and how a value is written.
template <class Value>
struct Choice {
  std::string_view word;
  Value value;
};

inline constexpr Choice<bool> kOnOff[] = {{"on", true}, {"off", false}};

/// Returns the word for a value, which must be one of the choices.
template <class Value, std::size_t count>
std::string wordFor(const Choice<Value> (&choices)[count], const Value& value) {
  return std::string(std::ranges::find(choices, value, &Choice<Value>::value)->word);
}

/// Returns the words as the help lists them, for example "{on,off}".
template <class Value, std::size_t count>
std::string wordsOf(const Choice<Value> (&choices)[count]) {
  std::string words;
  for (const auto& choice : choices) {
    words += words.empty() ? "{" : ",";
    words += choice.word;
  }
  return words + "}";
}

/// Adds an option, or a positional argument, that takes one of the words and stores its value in `target`. If
/// that is a Value, the help shows its present content as the default; it may also be a std::optional, which
/// has none. The choices and the target must exist until parsing is over.
template <class Value, std::size_t count, class Target>
CLI::Option* addChoice(CLI::App& app, const std::string& name, const Choice<Value> (&choices)[count],
                       Target& target, const std::string& help) {
  const auto store = [&choices, &target, name](const std::string& word) {
    const auto* chosen = std::ranges::find(choices, word, &Choice<Value>::word);
    if (chosen == std::end(choices)) {
      throw CLI::ValidationError(name, fmt::format("'{}' is not one of {}", word, wordsOf(choices)));
    }
    target = chosen->value;
  };
  auto* option = app.add_option_function<std::string>(name, store, help)->type_name(wordsOf(choices));
  if constexpr (std::is_same_v<Value, Target>) {
    option->default_str(wordFor(choices, target));
  }
  return option;
}

}  // namespace nivlo
