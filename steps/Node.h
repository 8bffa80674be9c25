#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ormalux {

/// A value of a document that somebody wrote: what it is, and the line where it stands.
struct Node
{
    enum class Kind
    {
        Null,
        Flag,
        Integer,
        Real,
        Text,
        List,
        Object
    };

    Kind kind = Kind::Null;
    int line = 0;
    bool flag = false;
    std::int64_t integer = 0;
    double real = 0; ///< of both kinds of number
    std::string text;
    std::vector<Node> items;       ///< of a list; of an object the values, in the order of its fields
    std::vector<std::string> keys; ///< the fields of an object, each once
    std::vector<int> keyLines;

    bool isNumber() const { return kind == Kind::Integer || kind == Kind::Real; }
    bool isText() const { return kind == Kind::Text; }
    bool isList() const { return kind == Kind::List; }
    bool isObject() const { return kind == Kind::Object; }
    /// The field's value; null when this is no object or has no such field.
    const Node* find(std::string_view key) const;

    static Node ofText(std::string_view text, int line = 0);
    static Node ofInteger(std::int64_t value, int line = 0);
    static Node ofReal(double value, int line = 0);
};

/// The value as JSON, cut to some 60 bytes, for messages.
std::string shownValue(const Node& node);
/// The whole value as JSON.
std::string nodeText(const Node& node);

class Faults;

/// Reads one JSON document, comments allowed. Bounded in depth, in fields of an object and in the length of
/// texts; a field that stands twice is refused. What is wrong is added to faults, with its line; the node is
/// then of no use and false is returned.
bool readDocument(std::string_view text, const std::string& file, Faults& faults, Node& document);

} // namespace ormalux
