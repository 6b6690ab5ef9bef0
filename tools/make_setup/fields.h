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

/// The fields of one JSON object. The caller asks for each by its name and kind. A field of another
/// kind throws SetupError with the field's name, and so does, at the end, a field that the caller
/// has not asked for, so that a misspelt name is not ignored. Missing fields read as empty, false
/// or 0.
class Fields {
 public:
  /// Keeps a reference to `object`.
  explicit Fields(const nlohmann::json& object);

  [[nodiscard]] bool Has(const std::string& name) const { return object_.contains(name); }
  /// The value of an existing field, of any kind.
  const nlohmann::json& Value(const std::string& name);
  /// A text, or a list of texts, which are its lines. Without zero characters.
  std::string Text(const std::string& name);
  /// The same for a field that must exist and not be empty.
  std::string NeededText(const std::string& name);
  bool Flag(const std::string& name);
  /// A whole number of 0 or more.
  std::uint64_t Number(const std::string& name);
  /// Calls `take` for each object of a list. The messages of its errors begin with the name and the
  /// entry's number, from 1.
  void ForEach(const std::string& name, const std::function<void(Fields&)>& take);

  /// Throws SetupError if the object has a field that was never asked for.
  void RefuseOthers() const;

 private:
  const nlohmann::json& object_;
  std::set<std::string> asked_;
};

/// Reads a JSON file, which may contain comments, and replaces each `${NAME}` in its texts. The
/// file's object "defaults" names all of them and gives their values, unless `values` does. Throws
/// SetupError for a file that is no JSON object, a name without a default, or a value in `values`
/// for such a name.
nlohmann::json ReadJson(const std::string& path, const Values& values);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_FIELDS_H_
