#include "steps/Node.h"

#include "steps/Faults.h"
#include "steps/JsonText.h"

#include <algorithm>

namespace ormalux {

namespace {

void append(std::string& text, const Node& node)
{
    switch (node.kind) {
    case Node::Kind::Null:
        text += "null";
        break;
    case Node::Kind::Flag:
        text += node.flag ? "true" : "false";
        break;
    case Node::Kind::Integer:
        appendInteger(text, node.integer);
        break;
    case Node::Kind::Real:
        appendReal(text, node.real);
        break;
    case Node::Kind::Text:
        appendText(text, node.text);
        break;
    case Node::Kind::List:
    case Node::Kind::Object:
        text += node.isList() ? '[' : '{';
        for (std::size_t i = 0; i < node.items.size(); ++i) {
            if (i > 0)
                text += ',';
            if (node.isObject()) {
                appendText(text, node.keys[i]);
                text += ':';
            }
            append(text, node.items[i]);
        }
        text += node.isList() ? ']' : '}';
        break;
    }
}

} // namespace

const Node* Node::find(std::string_view key) const
{
    const auto found = std::find(keys.begin(), keys.end(), key);
    return found == keys.end() ? nullptr : &items[std::size_t(found - keys.begin())];
}

Node Node::ofText(std::string_view text, int line)
{
    Node node;
    node.kind = Kind::Text;
    node.text = text;
    node.line = line;
    return node;
}

Node Node::ofInteger(std::int64_t value, int line)
{
    Node node;
    node.kind = Kind::Integer;
    node.integer = value;
    node.real = double(value);
    node.line = line;
    return node;
}

Node Node::ofReal(double value, int line)
{
    Node node;
    node.kind = Kind::Real;
    node.real = value;
    node.line = line;
    return node;
}

std::string nodeText(const Node& node)
{
    std::string text;
    append(text, node);
    return text;
}

std::string shownValue(const Node& node)
{
    return oneLine(nodeText(node), 60);
}

} // namespace ormalux
