#include "tools/make_setup/fields.h"

#include <algorithm>

#include "tools/make_setup/files.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

using nlohmann::json;

/// Values are searched recursively, so a file of brackets alone could use up the stack.
constexpr int kDeepest = 10;

std::string Line(const json& value) {
  if (!value.is_string()) {
    throw SetupError("must be a text in quotes or a list of such lines");
  }
  const auto& text = value.get_ref<const std::string&>();
  if (text.find('\0') != std::string::npos) {
    throw SetupError("must not contain a zero character: the text would end there");
  }
  return text;
}

void Substitute(std::string& text, const Values& values) {
  for (std::size_t at = 0; (at = text.find("${", at)) != std::string::npos;) {
    const std::size_t end = text.find('}', at);
    const auto value = values.find(text.substr(at + 2, end - at - 2));
    // Not left as it is: a misspelt name would be shown to every user.
    if (end == std::string::npos || value == values.end()) {
      throw SetupError(Quoted(text.substr(at, end == std::string::npos ? end : end - at + 1)) +
                       R"(: must be one of the names in "defaults")");
    }
    text.replace(at, end - at + 1, value->second);
    // Behind the value, which is not replaced again: a value may contain "${".
    at += value->second.size();
  }
}

void SubstituteAll(json& value, const Values& values) {
  if (value.is_string()) {
    Substitute(value.get_ref<std::string&>(), values);
  } else if (value.is_object()) {
    for (const auto& [name, child] : value.items()) {
      At(name, [&part = child, &values] { SubstituteAll(part, values); });
    }
  } else if (value.is_array()) {
    for (json& child : value) {
      SubstituteAll(child, values);
    }
  }
}

}  // namespace

Fields::Fields(const json& object) : object_(object) {
  if (!object.is_object()) {
    throw SetupError("must be an object, in braces");
  }
}

const json& Fields::Value(const std::string& name) {
  asked_.insert(name);
  return object_.at(name);
}

std::string Fields::Text(const std::string& name) {
  // Also if it is missing, so that RefuseOthers knows every name that is allowed here.
  asked_.insert(name);
  if (!Has(name)) {
    return "";
  }
  return At(name, [&] {
    const json& value = Value(name);
    if (!value.is_array()) {
      return Line(value);
    }
    std::string text;
    for (const json& line : value) {
      text += (&line == &value.front() ? "" : "\n") + Line(line);
    }
    return text;
  });
}

std::string Fields::NeededText(const std::string& name) {
  std::string text = Text(name);
  if (text.empty()) {
    throw SetupError(name + ": is required");
  }
  return text;
}

bool Fields::Flag(const std::string& name) {
  if (!Has(name)) {
    asked_.insert(name);
    return false;
  }
  const json& value = Value(name);
  // "false" in quotes would otherwise count as a text that is not empty.
  if (!value.is_boolean()) {
    throw SetupError(name + ": must be true or false");
  }
  return value.get<bool>();
}

std::uint64_t Fields::Number(const std::string& name) {
  asked_.insert(name);
  if (!Has(name)) {
    return 0;
  }
  const json& value = Value(name);
  // Neither a fraction nor a negative number, which would become a huge one.
  if (!value.is_number_unsigned()) {
    throw SetupError(name + ": must be a whole number of 0 or more");
  }
  return value.get<std::uint64_t>();
}

void Fields::ForEach(const std::string& name, const std::function<void(Fields&)>& take) {
  asked_.insert(name);
  if (!Has(name)) {
    return;
  }
  const json& list = Value(name);
  if (!list.is_array()) {
    throw SetupError(name + ": must be a list, in brackets");
  }
  for (std::size_t i = 0; i < list.size(); ++i) {
    // From 1, as a reader counts the entries of the file.
    At(name + ": entry " + std::to_string(i + 1), [&] {
      Fields entry(list[i]);
      take(entry);
      entry.RefuseOthers();
    });
  }
}

void Fields::RefuseOthers() const {
  for (const auto& [name, value] : object_.items()) {
    if (!asked_.contains(name)) {
      throw SetupError(name + ": there is no such field");
    }
  }
}

json ReadJson(const std::string& path, const Values& values) {
  const auto shallow = [](int depth, json::parse_event_t /*event*/, const json& /*parsed*/) {
    if (depth > kDeepest) {
      throw SetupError("must not nest braces and brackets deeper than " + std::to_string(kDeepest));
    }
    return true;
  };
  const std::string text = ReadFile(path);
  json document;
  try {
    document = json::parse(text, shallow, true, true);
  } catch (const json::parse_error& error) {
    // The library's message speaks of its parser, and its position is in bytes.
    const std::size_t end = std::min(error.byte, text.size());
    const auto lines = std::count(text.data(), text.data() + end, '\n');
    throw SetupError("line " + std::to_string(lines + 1) + ": must be valid JSON");
  }
  if (!document.is_object()) {
    throw SetupError("must be an object, in braces");
  }
  Values all = values;
  const json defaults = document.value("defaults", json::object());
  // Its own values are plain: a default can't refer to another one.
  document.erase("defaults");
  At("defaults", [&] {
    Fields fields(defaults);
    for (const auto& [name, value] : defaults.items()) {
      // A value of the command line stays.
      all.try_emplace(name, fields.Text(name));
    }
    for (const auto& [name, value] : values) {
      // A name that nothing uses is a misspelt one.
      if (!fields.Has(name)) {
        throw SetupError(Quoted(name) + ": has no default, so it can't be set");
      }
    }
  });
  SubstituteAll(document, all);
  return document;
}

}  // namespace zephin::make_setup
