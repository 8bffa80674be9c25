#include "steps/Faults.h"
#include "steps/Node.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>

namespace ormalux {

namespace {

constexpr std::size_t deepest = 64;
constexpr std::size_t mostFields = 1000;
constexpr std::size_t longestText = 65535;

/// Walks over a text and shares how far it has come, so that whoever is told of a value knows its line.
struct CountedCharacter
{
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    const char* at = nullptr;
    const char** reached = nullptr;

    reference operator*() const { return *at; }
    CountedCharacter& operator++()
    {
        ++at;
        *reached = at;
        return *this;
    }
    CountedCharacter operator++(int)
    {
        CountedCharacter old = *this;
        ++*this;
        return old;
    }
    bool operator==(const CountedCharacter& other) const { return at == other.at; }
    bool operator!=(const CountedCharacter& other) const { return at != other.at; }
};

/// Builds the tree from the reader's events.
class TreeBuilder
{
public:
    using number_integer_t = nlohmann::json::number_integer_t;
    using number_unsigned_t = nlohmann::json::number_unsigned_t;
    using number_float_t = nlohmann::json::number_float_t;
    using string_t = nlohmann::json::string_t;
    using binary_t = nlohmann::json::binary_t;

    TreeBuilder(const std::string& file, Faults& faults, Node& root, const char* const& reached,
                std::string_view text)
        : m_file(file), m_faults(faults), m_root(root), m_reached(reached), m_counted(text.data()),
          m_begin(text.data())
    {}

    bool null() { return take(Node::Kind::Null) != nullptr; }
    bool boolean(bool value)
    {
        Node* const node = take(Node::Kind::Flag);
        if (node)
            node->flag = value;
        return node != nullptr;
    }
    bool number_integer(number_integer_t value)
    {
        Node* const node = take(Node::Kind::Integer);
        if (node) {
            node->integer = value;
            node->real = double(value);
        }
        return node != nullptr;
    }
    bool number_unsigned(number_unsigned_t value)
    {
        return value <= number_unsigned_t(INT64_MAX) ? number_integer(number_integer_t(value))
                                                     : number_float(double(value), {});
    }
    bool number_float(number_float_t value, const string_t&)
    {
        Node* const node = take(Node::Kind::Real);
        if (node)
            node->real = value;
        return node != nullptr;
    }
    bool string(string_t& value)
    {
        if (value.size() > longestText)
            return refuse("a text of more than 65535 bytes");
        Node* const node = take(Node::Kind::Text);
        if (node)
            node->text = std::move(value);
        return node != nullptr;
    }
    bool binary(binary_t&) { return false; }
    bool start_object(std::size_t) { return open(Node::Kind::Object); }
    bool start_array(std::size_t) { return open(Node::Kind::List); }
    bool end_object() { return close(); }
    bool end_array() { return close(); }
    bool key(string_t& name)
    {
        Node& object = *m_open.back();
        if (object.keys.size() >= mostFields)
            return refuse("an object of more than 1000 fields");
        if (std::find(object.keys.begin(), object.keys.end(), name) != object.keys.end()) {
            m_faults.add(m_file, line(), place() + oneLine(name, 60), "the field stands twice");
            m_doubled = true; // told with all others of its kind; the first one is kept
        }
        object.keys.push_back(std::move(name));
        object.keyLines.push_back(line());
        return true;
    }
    bool parse_error(std::size_t, const std::string& token, const nlohmann::detail::exception& error)
    {
        const std::string_view why = error.what();
        if (error.id == 406)
            return refuse("a number out of range: " + oneLine(token, 40));
        if (why.find("UTF-8") != std::string_view::npos)
            return refuse("not JSON: a text that is not UTF-8");
        if (why.find("unexpected end of input") != std::string_view::npos)
            return refuse("not JSON: the text ends too early");
        return refuse("not JSON at " + oneLine(token, 40));
    }
    bool good() const { return !m_doubled; }

private:
    bool refuse(const std::string& why)
    {
        m_faults.add(m_file, line(), "", why);
        return false;
    }

    /// "step 2, " within the second step, likewise for limits; nothing outside of them.
    std::string place() const
    {
        if (m_open.size() < 3 || (m_root.keys.back() != "steps" && m_root.keys.back() != "limits"))
            return {};
        const std::string list = m_root.keys.back();
        return list.substr(0, list.size() - 1) + " " + std::to_string(m_open[1]->items.size()) + ", ";
    }

    /// The line of the last character that belongs to the value: one behind a number has been looked at.
    int line()
    {
        const char* const end = m_reached == m_begin ? m_begin : m_reached - 1;
        m_line += int(std::count(m_counted, std::max(m_counted, end), '\n'));
        m_counted = std::max(m_counted, end);
        return m_line;
    }

    Node* take(Node::Kind kind)
    {
        Node* node = &m_root;
        if (!m_open.empty()) {
            m_open.back()->items.emplace_back();
            node = &m_open.back()->items.back();
        }
        node->kind = kind;
        node->line = line();
        return node;
    }

    bool open(Node::Kind kind)
    {
        if (m_open.size() >= deepest)
            return refuse("nested more than 64 deep");
        m_open.push_back(take(kind));
        return true;
    }

    bool close()
    {
        m_open.pop_back();
        return true;
    }

    const std::string& m_file;
    Faults& m_faults;
    Node& m_root;
    const char* const& m_reached;
    const char* m_counted; ///< lines are counted up to here
    const char* m_begin;
    int m_line = 1;
    bool m_doubled = false;
    std::vector<Node*> m_open; ///< outermost first; their items grow only at the innermost
};

} // namespace

bool readDocument(std::string_view text, const std::string& file, Faults& faults, Node& document)
{
    document = Node();
    const char* reached = text.data();
    TreeBuilder builder(file, faults, document, reached, text);
    const CountedCharacter first{text.data(), &reached}, last{text.data() + text.size(), &reached};
    const std::size_t before = faults.count();
    const bool read =
        nlohmann::json::sax_parse(first, last, &builder, nlohmann::json::input_format_t::json, true, true);
    if (!read && faults.count() == before)
        faults.add(file, 0, "", "not JSON");
    return read && builder.good();
}

} // namespace ormalux
