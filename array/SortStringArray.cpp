#include "array/ValueArray.h"

#include "array/RecordFind.h"
#include "array/RecordSort.h"

#include <string_view>

namespace {

std::string_view viewOf(const char* text)
{
    return text ? std::string_view(text) : std::string_view();
}

/// The text, or nothing when memory is short.
std::optional<CString> textOf(const char* text)
{
    try {
        return CString(viewOf(text));
    } catch (...) {
        return std::nullopt;
    }
}

constexpr unsigned char folded(char c)
{
    return static_cast<unsigned char>('A' <= c && c <= 'Z' ? c - 'A' + 'a' : c);
}

/// Orders texts by their bytes with ASCII letters folded to lower case.
struct FoldedText
{
    std::string_view text;

    bool operator<(const FoldedText& other) const
    {
        return std::lexicographical_compare(text.begin(), text.end(), other.text.begin(), other.text.end(),
                                            [](char a, char b) { return folded(a) < folded(b); });
    }
};

int findText(std::span<const CString> texts, std::string_view wanted, int start)
{
    return ormalux::findFrom(texts, start, [wanted](const CString& text) { return text == wanted; });
}

} // namespace

void CSortStringArray::Add(const char* text)
{
    if (const auto copy = textOf(text))
        append(*copy);
}

void CSortStringArray::Insert(int index, const char* text)
{
    if (const auto copy = textOf(text))
        insertOver(index, *copy);
}

void CSortStringArray::SetAt(int index, const char* text)
{
    if (const auto copy = textOf(text))
        setAt(index, *copy);
}

int CSortStringArray::Find(const char* text, int start)
{
    return findText(records(), viewOf(text), start);
}

int CSortStringArray::Find(const CString& text, int start)
{
    return findText(records(), text, start);
}

void CSortStringArray::Sort()
{
    sortBy([](const CString& text) { return FoldedText{text}; });
}
