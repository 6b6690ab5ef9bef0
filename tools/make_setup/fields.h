#ifndef TOOLS_MAKE_SETUP_FIELDS_H_
#define TOOLS_MAKE_SETUP_FIELDS_H_

#include <cstdint>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

namespace zephin::make_setup {

/// Values for the names of `${NAME}`.
using Values = std::map<std::string, std::string>;

/// The fields of one JSON object, each asked for by its name and kind. A field of another kind, and
/// in the end every field that nobody asked for, throws SetupError with the field's name: a typing
/// error must not pass for a field left out. Fields that are not there read as empty, false or 0.
class Fields {
 public:
  /// Keeps a reference to `object`.
  explicit Fields(const nlohmann::json& object);

  [[nodiscard]] bool Has(const std::string& name) const { return object_.contains(name); }
  /// The value of a field that is there, of any kind.
  const nlohmann::json& Value(const std::string& name);
  /// A text, or a list of texts, which are its lines.
  std::string Text(const std::string& name);
  /// The same for a field that must be there and not be empty.
  std::string NeededText(const std::string& name);
  bool Flag(const std::string& name);
  /// A whole number from 0 on.
  std::uint64_t Number(const std::string& name);
  /// Calls `take` for each object of a list; `place` of its errors is the entry's number from 1.
  void ForEach(const std::string& name, const std::function<void(Fields&)>& take);

  void RefuseOthers() const;

 private:
  const nlohmann::json& object_;
  std::set<std::string> asked_;
};

/// Reads a JSON file, which may hold comments, and puts in each of its texts the value for each
/// `${NAME}`. Values that the file itself has for such names, in an object "defaults" at the top,
/// count where `values` has none; a name without a value is refused, and so is a value in `values`
/// for a name that the file has no default for.
nlohmann::json ReadJson(const std::string& path, const Values& values);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_FIELDS_H_
