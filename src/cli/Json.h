#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zu {

/// Writes one JSON value, indented. Calls follow the structure of the value; keys precede the values of
/// objects.
class JsonWriter {
  public:
    void BeginObject() { Begin('{'); }
    void EndObject() { End('}'); }
    void BeginArray() { Begin('['); }
    void EndArray() { End(']'); }
    void Key(std::string_view key);

    /// A text of the state: Latin-1 bytes.
    void String(std::string_view latin1);
    /// A file name: kept as it is if it is UTF-8, else taken as Latin-1.
    void Path(std::string_view path);
    void Integer(std::int64_t value);
    /// A finite number in its shortest form.
    void Number(double value);
    void Boolean(bool value);
    void Null();

    void String(std::string_view key, std::string_view latin1) { Key(key), String(latin1); }
    void Integer(std::string_view key, std::int64_t value) { Key(key), Integer(value); }
    void Boolean(std::string_view key, bool value) { Key(key), Boolean(value); }

    /// The value with a line end.
    [[nodiscard]] std::string Text() const { return text_ + "\n"; }

  private:
    void Begin(char bracket);
    void End(char bracket);
    /// Comma, line end and indentation where the next value needs them.
    void Separate();
    void NewLine();
    void Quoted(std::string_view utf8);

    std::string text_;
    std::vector<bool> filled_;  ///< per open bracket: whether it holds a value already
    bool afterKey_ = false;
};

}  // namespace zu
