#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace ormalux {

/// One match source as the editor holds it: what its file says (see array/MatchSourceFile.h), without the
/// counts, which always follow from the pixels.
struct PatternTemplate
{
    std::uint8_t key = 0;
    std::int32_t threshold = 0;
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels; ///< width x height, 0 is black and 255 white, rows from the top

    /// The largest template that can be edited.
    static constexpr int maxSide = 8192;
    static constexpr std::int64_t maxPixels = std::int64_t(1) << 24;
    /// Whether a template can be given that size.
    static bool isSize(std::int64_t width, std::int64_t height);

    bool contains(int x, int y) const { return x >= 0 && y >= 0 && x < width && y < height; }
    std::uint8_t at(int x, int y) const
    {
        return pixels[std::size_t(y) * std::size_t(width) + std::size_t(x)];
    }
    /// False, with nothing written, for a pixel outside.
    bool set(int x, int y, std::uint8_t value);
    int blackCount() const; ///< bytes of 0
    int whiteCount() const; ///< bytes above 254

    void flipLeftRight();
    void flipUpDown();
    /// Keeps the pixels at the top left; what is added is white. False, with nothing changed, for what is no
    /// size and when memory is short.
    bool resize(int newWidth, int newHeight);

    /// Writes the file, whole or not at all, with the counts of the pixels; false when that fails.
    bool save(const char* path) const;

    bool operator==(const PatternTemplate&) const = default;
};

/// How reading a template ended.
enum class PatternRead
{
    Done,
    NoFile,
    NotASource, ///< shorter than it says, or of a negative size
    TooLarge,
    NoMemory
};

/// Reads a source file; the template is empty unless that is done. Takes no more memory than the file is
/// long.
std::pair<PatternRead, PatternTemplate> readPattern(const char* path);

/// The states of a template one after the other, to go back and forth between.
class PatternHistory
{
public:
    const PatternTemplate& current() const { return m_current; }
    /// For changes that belong to the step last begun.
    PatternTemplate& edited() { return m_current; }
    /// Another template without a past.
    void restart(PatternTemplate pattern);
    /// What follows is one step, which undo() takes back whole. The oldest steps are forgotten when they take
    /// too much memory.
    void beginStep();
    /// Forgets the step again if it changed nothing.
    void endStep();
    bool canUndo() const { return !m_past.empty(); }
    bool canRedo() const { return !m_future.empty(); }
    bool undo();
    bool redo();

private:
    void forgetOldest();

    PatternTemplate m_current;
    std::vector<PatternTemplate> m_past;
    std::vector<PatternTemplate> m_future; ///< the next one last
    std::vector<PatternTemplate> m_cutOff; ///< the future that the step now open takes away
};

} // namespace ormalux
