#include "match/CharacterPieces.h"

#include <algorithm>
#include <queue>
#include <tuple>

namespace ormalux {

namespace {

/// Pieces beyond so many are noise: nothing is joined then.
constexpr std::size_t mostPieces = 10000;

CharacterBox unionOf(const CharacterBox& a, const CharacterBox& b)
{
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

bool contains(const CharacterBox& outer, const CharacterBox& inner)
{
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

/// Two pieces, the first left of the second, and what they are together.
struct Joint
{
    std::size_t first;
    std::size_t second;
    CharacterPiece whole;
    double gain;
    int changes; ///< of both pieces when they were tried

    bool operator<(const Joint& other) const
    {
        if (gain != other.gain)
            return gain < other.gain;
        return std::tie(first, second) > std::tie(other.first, other.second);
    }
};

class Joiner
{
public:
    Joiner(CharacterReader& reader, const BlobSizes& sizes, std::vector<CharacterPiece>& pieces)
        : m_reader(reader), m_sizes(sizes), m_pieces(pieces)
    {}

    bool run()
    {
        std::stable_sort(
            m_pieces.begin(), m_pieces.end(),
            [](const CharacterPiece& a, const CharacterPiece& b) { return a.box.left < b.box.left; });
        m_gone.assign(m_pieces.size(), false);
        m_changes.assign(m_pieces.size(), 0);
        for (std::size_t i = 0; i < m_pieces.size(); ++i)
            if (!tryRightOf(i))
                return false;
        while (!m_joints.empty()) {
            const Joint joint = m_joints.top();
            m_joints.pop();
            if (isCurrent(joint) && !apply(joint))
                return false;
        }
        std::size_t kept = 0;
        for (std::size_t i = 0; i < m_pieces.size(); ++i)
            if (!m_gone[i])
                m_pieces[kept++] = m_pieces[i];
        m_pieces.resize(kept);
        return true;
    }

private:
    /// Tries a piece with those that begin right of it within a character's width.
    bool tryRightOf(std::size_t i)
    {
        for (std::size_t j = i + 1; j < m_pieces.size(); ++j) {
            if (m_pieces[j].box.left - m_pieces[i].box.left >= m_reader.widest())
                break;
            if (!m_gone[j] && !tryJoint(i, j))
                return false;
        }
        return true;
    }

    bool tryLeftOf(std::size_t i)
    {
        for (std::size_t j = i; j-- > 0 && m_pieces[i].box.left - m_pieces[j].box.left < m_reader.widest();)
            if (!m_gone[j] && !tryJoint(j, i))
                return false;
        return true;
    }

    bool tryJoint(std::size_t i, std::size_t j)
    {
        const CharacterPiece &a = m_pieces[i], &b = m_pieces[j];
        const CharacterBox box = unionOf(a.box, b.box);
        const std::int64_t area = a.area + b.area;
        if (box.width() > m_reader.widest() || box.height() > m_reader.highest() ||
            !m_sizes.admit(box.width(), box.height()))
            return true;
        if (contains(a.box, b.box) || contains(b.box, a.box)) {
            const CharacterPiece& outer = contains(a.box, b.box) ? a : b;
            const CharacterPiece& inner = &outer == &a ? b : a;
            if (outer.best.share >= inner.best.share)
                add(i, j, {outer.box, area, outer.best}, outer.best.share - inner.best.share);
            return true;
        }
        if (!m_reader.hasSize(box))
            return true;
        BestKeys best;
        if (!m_reader.read(box, best))
            return false;
        const double alone = (a.best.share * double(a.area) + b.best.share * double(b.area)) / double(area);
        const double gain = best.share - alone;
        if (gain > 0)
            add(i, j, {box, area, best}, gain);
        return true;
    }

    bool isCurrent(const Joint& joint) const
    {
        return !m_gone[joint.first] && !m_gone[joint.second] &&
               joint.changes == m_changes[joint.first] + m_changes[joint.second];
    }

    void add(std::size_t i, std::size_t j, const CharacterPiece& whole, double gain)
    {
        m_joints.push({i, j, whole, gain, m_changes[i] + m_changes[j]});
    }

    /// The two become one, at the first's place.
    bool apply(const Joint& joint)
    {
        m_pieces[joint.first] = joint.whole;
        ++m_changes[joint.first];
        m_gone[joint.second] = true;
        return tryLeftOf(joint.first) && tryRightOf(joint.first);
    }

    CharacterReader& m_reader;
    const BlobSizes& m_sizes;
    std::vector<CharacterPiece>& m_pieces;
    std::vector<bool> m_gone;
    std::vector<int> m_changes;
    std::priority_queue<Joint> m_joints;
};

} // namespace

bool joinPieces(CharacterReader& reader, const BlobSizes& sizes, std::vector<CharacterPiece>& pieces)
{
    const auto whole = [&](const CharacterPiece& piece) {
        return sizes.admit(piece.box.width(), piece.box.height());
    };
    std::vector<CharacterBox> boxes;
    for (const CharacterPiece& piece : pieces)
        if (whole(piece))
            boxes.push_back(piece.box);
    std::vector<BestKeys> best(boxes.size());
    if (!reader.readAll(boxes, best))
        return false;
    auto next = best.begin();
    for (CharacterPiece& piece : pieces)
        if (whole(piece))
            piece.best = *next++;
    if (pieces.size() <= mostPieces && !Joiner(reader, sizes, pieces).run())
        return false;
    std::erase_if(pieces, [&](const CharacterPiece& piece) { return !whole(piece); });
    return true;
}

} // namespace ormalux
