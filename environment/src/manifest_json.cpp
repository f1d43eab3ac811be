#include "manifest_json.hpp"

#include <algorithm>
#include <boost/json/basic_parser_impl.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <optional>
#include <search_path_environment/package_manifest.hpp>
#include <set>
#include <utility>

#include "quoted_name.hpp"

namespace Quorvex::PathEnvironment {

namespace {

namespace json = boost::json;

// Puts values together as the parser meets them. Tokens never run over the end of a line, so whoever feeds the parser
// line by line can tell each its own.
class Builder {
 public:
  static constexpr std::size_t max_object_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_array_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_key_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_string_size = static_cast<std::size_t>(-1);

  void EnterLine(std::size_t line) { line_ = line; }
  /// What the parser cannot know.
  [[nodiscard]] const std::optional<std::string>& GetRefusal() const { return refusal_; }
  [[nodiscard]] JsonValue TakeDocument() { return std::move(document_); }

  bool on_document_begin(json::error_code& /*error*/) { return true; }
  bool on_document_end(json::error_code& /*error*/) { return true; }
  bool on_object_begin(json::error_code& /*error*/) { return Begin(JsonValue::Object()); }
  bool on_object_end(std::size_t /*count*/, json::error_code& /*error*/) { return End(); }
  bool on_array_begin(json::error_code& /*error*/) { return Begin(JsonValue::Array()); }
  bool on_array_end(std::size_t /*count*/, json::error_code& /*error*/) { return End(); }
  bool on_key_part(json::string_view part, std::size_t /*length*/, json::error_code& /*error*/) { return Append(part); }
  bool on_key(json::string_view part, std::size_t /*length*/, json::error_code& error) {
    Append(part);
    return Name(TakeText(), error);
  }
  bool on_string_part(json::string_view part, std::size_t /*length*/, json::error_code& /*error*/) {
    return Append(part);
  }
  bool on_string(json::string_view part, std::size_t /*length*/, json::error_code& /*error*/) {
    Append(part);
    return Place({TakeText(), line_});
  }
  bool on_number_part(json::string_view /*part*/, json::error_code& /*error*/) { return true; }
  bool on_int64(std::int64_t number, json::string_view /*part*/, json::error_code& /*error*/) {
    return Place({number, line_});
  }
  bool on_uint64(std::uint64_t number, json::string_view /*part*/, json::error_code& /*error*/) {
    return Place({static_cast<double>(number), line_});
  }
  bool on_double(double number, json::string_view /*part*/, json::error_code& /*error*/) {
    return Place({number, line_});
  }
  bool on_bool(bool value, json::error_code& /*error*/) { return Place({value, line_}); }
  bool on_null(json::error_code& /*error*/) { return Place({nullptr, line_}); }
  bool on_comment_part(json::string_view /*part*/, json::error_code& /*error*/) { return true; }
  bool on_comment(json::string_view /*part*/, json::error_code& /*error*/) { return true; }

 private:
  /// An array or object that is not complete yet.
  struct Unfinished {
    JsonValue value;
    std::u16string name;  // of the member that comes next
    std::size_t nameLine = 0;
    std::set<std::u16string> names;
  };

  template <class Container>
  bool Begin(Container container) {
    unfinished_.push_back({{std::move(container), line_}, {}, 0, {}});
    return true;
  }

  bool End() {
    JsonValue value = std::move(unfinished_.back().value);
    unfinished_.pop_back();
    return Place(std::move(value));
  }

  bool Append(json::string_view part) {
    bytes_.append(part.data(), part.size());
    return true;
  }

  std::u16string TakeText() { return fl::filesystem::from_bytes(std::exchange(bytes_, {})); }

  bool Name(std::u16string name, json::error_code& error) {
    Unfinished& object = unfinished_.back();
    if (!object.names.insert(name).second) {
      refusal_ = QuotedName(name) + " stands twice in one object";
      error = make_error_code(boost::system::errc::invalid_argument);
      return false;
    }
    object.name = std::move(name);
    object.nameLine = line_;
    return true;
  }

  bool Place(JsonValue value) {
    if (unfinished_.empty()) {
      document_ = std::move(value);
      return true;
    }
    Unfinished& holder = unfinished_.back();
    if (auto* const array = std::get_if<JsonValue::Array>(&holder.value.content)) {
      array->push_back(std::move(value));
    } else {
      std::get<JsonValue::Object>(holder.value.content)
          .push_back({std::move(holder.name), holder.nameLine, std::move(value)});
    }
    return true;
  }

  JsonValue document_;
  std::vector<Unfinished> unfinished_;  // the innermost last
  std::string bytes_;                   // of the text that is not complete yet
  std::size_t line_ = 1;
  std::optional<std::string> refusal_;
};

// The column, in characters from 1, behind the bytes `before` of a line.
std::size_t ColumnAfter(std::string_view before) {
  const auto isCharacter = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; };
  return static_cast<std::size_t>(std::count_if(before.begin(), before.end(), isCharacter)) + 1;
}

// Everything up to the end of the first line, that included.
std::string_view FirstLineOf(std::string_view text) {
  const std::size_t end = text.find('\n');
  return end == std::string_view::npos ? text : text.substr(0, end + 1);
}

}  // namespace

JsonValue ParseJson(std::string_view text) {
  json::basic_parser<Builder> parser{json::parse_options()};
  json::error_code error;
  const auto refuse = [&](std::size_t line, std::size_t column) {
    const auto& refusal = parser.handler().GetRefusal();
    if (refusal) throw ManifestError(line, 0, *refusal);
    throw ManifestError(line, column, "it is not JSON: " + error.message());
  };

  std::size_t line = 1;
  while (!text.empty()) {
    const std::string_view current = FirstLineOf(text);
    parser.handler().EnterLine(line);
    const std::size_t read = parser.write_some(true, current.data(), current.size(), error);
    if (!error && read < current.size()) error = json::error::extra_data;
    if (error) refuse(line, ColumnAfter(current.substr(0, read)));
    text.remove_prefix(current.size());
    if (current.back() == '\n') ++line;
  }
  static_cast<void>(parser.write_some(false, "", 0, error));
  if (error) refuse(line, 0);
  return parser.handler().TakeDocument();
}

}  // namespace Quorvex::PathEnvironment
