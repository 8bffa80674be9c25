#include "steps/ArgumentText.h"
#include "steps/RecipePlan.h"

#include "platform/File.h"
#include "platform/Path.h"

#include <algorithm>

namespace ormalux {

namespace {

constexpr std::uint64_t largestRecipe = 16 << 20;
constexpr std::size_t deepestInclude = 16;
constexpr std::size_t mostParts = 200;

std::string utf8(const std::filesystem::path& path)
{
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::string folderOf(const std::string& file)
{
    return utf8(nativePath(file.c_str()).parent_path());
}

std::string joined(const std::string& folder, const std::string& name)
{
    const auto path = nativePath(name.c_str());
    return folder.empty() || path.is_absolute() ? name : utf8(nativePath(folder.c_str()) / path);
}

/// The same text for every way to write a file's path.
std::string identityOf(const std::string& file)
{
    std::error_code error;
    const auto known = std::filesystem::weakly_canonical(nativePath(file.c_str()), error);
    return error ? file : utf8(known);
}

bool sameKind(const Node& a, const Node& b)
{
    return a.kind == b.kind || (a.isNumber() && b.isNumber());
}

const char* kindName(const Node& node)
{
    switch (node.kind) {
    case Node::Kind::Flag:
        return "true or false";
    case Node::Kind::Integer:
    case Node::Kind::Real:
        return "a number";
    case Node::Kind::Text:
        return "a text";
    case Node::Kind::List:
        return "a list";
    default:
        return "an object";
    }
}

} // namespace

void RecipeDocuments::load(const std::string& path, Faults& faults)
{
    std::vector<std::string> open;
    addFile(path, faults, open);
}

void RecipeDocuments::parse(std::string_view json, const std::string& folder, Faults& faults)
{
    std::vector<std::string> open;
    if (json.size() > largestRecipe)
        faults.add("recipe", 0, "", "larger than 16 MB");
    else
        add(json, "recipe", folder, faults, open);
}

void RecipeDocuments::addFile(const std::string& path, Faults& faults, std::vector<std::string>& open)
{
    const auto bytes = readFile(path.c_str(), largestRecipe + 1);
    if (!bytes)
        return faults.add(path, 0, "", "cannot be read");
    if (bytes->size() > largestRecipe)
        return faults.add(path, 0, "", "larger than 16 MB");
    add({reinterpret_cast<const char*>(bytes->data()), bytes->size()}, path, folderOf(path), faults, open);
}

void RecipeDocuments::add(std::string_view json, const std::string& file, const std::string& folder,
                          Faults& faults, std::vector<std::string>& open)
{
    Part part{file, folder, {}};
    if (!readDocument(json, file, faults, part.root))
        return;
    if (!part.root.isObject())
        return faults.add(file, part.root.line, "", "an object with a list of steps is expected");
    open.push_back(identityOf(file));
    addIncluded(part, faults, open);
    open.pop_back();
    addValues(part, faults);
    m_parts.push_back(std::move(part));
}

void RecipeDocuments::addIncluded(const Part& part, Faults& faults, std::vector<std::string>& open)
{
    const Node* const include = part.root.find("include");
    if (!include)
        return;
    if (!include->isList())
        return faults.add(part.file, include->line, "include", "a list of recipes is expected");
    for (const Node& name : include->items) {
        if (!name.isText() || name.text.empty())
            faults.add(part.file, name.line, "include", shownValue(name) + ": expected a file's name");
        else if (open.size() >= deepestInclude || m_parts.size() >= mostParts)
            return faults.add(part.file, name.line, "include", "too many recipes in one another");
        else if (const std::string path = joined(part.folder, name.text); !fileLength(path.c_str()))
            faults.add(part.file, name.line, "include", path + ": cannot be read");
        else if (std::find(open.begin(), open.end(), identityOf(path)) != open.end())
            faults.add(part.file, name.line, "include", "the recipe includes itself");
        else
            addFile(path, faults, open);
    }
}

void RecipeDocuments::addValues(const Part& part, Faults& faults)
{
    const Node* const values = part.root.find("values");
    if (!values)
        return;
    if (!values->isObject())
        return faults.add(part.file, values->line, "values", "an object of named values is expected");
    for (std::size_t i = 0; i < values->keys.size(); ++i) {
        const std::string& name = values->keys[i];
        const Node& value = values->items[i];
        if (!isName(name))
            faults.add(part.file, values->keyLines[i], "values, " + name,
                       "a name is letters, digits and underscores, a letter first");
        else if (value.kind == Node::Kind::Null || value.isObject())
            faults.add(part.file, value.line, "values, " + name,
                       "expected a number, a text, true or false, or a list");
        const auto known = std::find(m_valueNames.begin(), m_valueNames.end(), name);
        if (known != m_valueNames.end()) {
            m_values[std::size_t(known - m_valueNames.begin())] = value;
            continue;
        }
        m_valueNames.push_back(name);
        m_values.push_back(value);
    }
}

const Node* RecipeDocuments::value(std::string_view name) const
{
    const auto known = std::find(m_valueNames.begin(), m_valueNames.end(), name);
    return known == m_valueNames.end() ? nullptr : &m_values[std::size_t(known - m_valueNames.begin())];
}

bool RecipeDocuments::set(const std::string& name, const std::string& json, std::string& why)
{
    const auto known = std::find(m_valueNames.begin(), m_valueNames.end(), name);
    if (known == m_valueNames.end()) {
        why = unknownName("value", name, m_valueNames);
        return false;
    }
    Node& value = m_values[std::size_t(known - m_valueNames.begin())];
    Faults ignored;
    Node given;
    const bool read = readDocument(json, name, ignored, given);
    if (value.isText() && !(read && given.isText()))
        given = Node::ofText(json);
    else if (!read || !sameKind(value, given)) {
        why = "\"" + oneLine(name, 60) + "\": " + oneLine(json, 60) + ": expected " + kindName(value);
        return false;
    }
    given.line = value.line;
    value = std::move(given);
    return true;
}

} // namespace ormalux
