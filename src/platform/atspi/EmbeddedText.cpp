// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/EmbeddedText.h"

#include "platform/Accessibility.h"
#include "platform/atspi/TextOffsets.h"
#include <algorithm>
#include <memory>
#include <vector>

namespace vellumo {
namespace {

constexpr char16_t byteOrderMark = u'\uFEFF'; ///< some browsers pad characters beyond the BMP
constexpr int maxEmbedding = 64;
/// More objects than the deadline allows to ask, few enough for the memory.
constexpr size_t maxEmbeddedObjects = 4096;

/// How much of a text the enclosing range requests.
enum class Extent : quint8 {
    Selected, ///< only the object's own selection, at an end of the range
    Whole, ///< the whole object unless it has a selection, strictly inside the range
};

struct Piece;

struct Slice {
    OffsetRange range; ///< end is -1 for the text's end
    QString text;
    std::vector<std::unique_ptr<Piece>> children; ///< one for each U+FFFC
};

struct Piece {
    ObjectReference object; ///< null where an embedded object could not be found
    Extent extent = Extent::Whole;
    Atspi::Role role = Atspi::Role::Invalid;
    bool isBlock = false;
    std::vector<Slice> slices;
};

using Level = std::vector<Piece *>;

/// Removes the bullet at the beginning of a list item, which is never selected.
QStringView withoutListMarker(const Piece &piece, const Slice &slice)
{
    constexpr QStringView bullets = u"•◦▪‣";
    const QStringView text = slice.text;
    const bool hasMarker = piece.role == Atspi::Role::ListItem && slice.range.start == 0
        && text.size() >= 2 && bullets.contains(text.at(0)) && text.at(1) == u' ';
    return hasMarker ? text.sliced(2) : text;
}

/// Walks the tree level by level and sends the calls of a level together, so that the number of
/// round trips depends on the depth only.
class Assembly {
public:
    Assembly(OffsetQuality offsets, AtspiQuestion &question)
        : offsets_(offsets)
        , question_(question)
    {
    }

    void fill(Piece &root);

    /// Returns whether the text is the complete selection.
    [[nodiscard]] bool isCertain() const { return isCertain_ && !question_.isAborted(); }

    [[nodiscard]] static QString join(const Piece &root);

private:
    struct Embedded {
        Piece *child;
        ObjectReference parent;
        PendingAnswer answer;
    };

    struct Joined {
        QString text;
        bool breakPending = false; ///< a block begins or has ended here

        void append(QChar unit)
        {
            if (std::exchange(breakPending, false) && !text.isEmpty() && !text.endsWith(u'\n')
                && unit != u'\n') {
                text.append(u'\n');
            }
            text.append(unit);
        }
    };

    void chooseSlices(const Level &level);
    void takeRanges(Piece &piece, const SelectedRanges &selected);
    void readTexts(const Level &level);
    void takeText(Slice &slice, const QString &text);
    [[nodiscard]] std::vector<Embedded> askForLinks(const Level &level);
    [[nodiscard]] Level resolveChildren(const Level &level);
    static void append(const Piece &piece, Joined &joined);

    OffsetQuality offsets_;
    AtspiQuestion &question_;
    bool isCertain_ = true;
    size_t objects_ = 0;
    qsizetype length_ = 0; ///< length of the texts read so far, without embedded objects
};

void Assembly::fill(Piece &root)
{
    Level level{&root};
    for (int depth = 0; depth < maxEmbedding && !level.empty(); ++depth) {
        if (depth > 0) {
            chooseSlices(level);
        }
        readTexts(level);
        if (length_ > maxSelectionLength) {
            return; // too long already
        }
        level = resolveChildren(level);
        if (!isCertain()) {
            return;
        }
    }
}

void Assembly::chooseSlices(const Level &level)
{
    struct Answers {
        PendingAnswer role;
        PendingRanges ranges;
    };
    std::vector<Answers> answers;
    answers.reserve(level.size());
    for (const Piece *piece : level) {
        answers.push_back({question_.send(piece->object, Atspi::accessible, "GetRole"),
                           PendingRanges(piece->object, question_)});
    }
    for (size_t i = 0; i < level.size(); ++i) {
        Piece &piece = *level[i];
        const auto role = answers[i].role.value<quint32>();
        const auto selected = answers[i].ranges.take();
        piece.role = static_cast<Atspi::Role>(role.value_or(0));
        piece.isBlock = Atspi::isBlockRole(piece.role);
        if (!role || !selected || Atspi::isControlRole(piece.role)) {
            continue;
        }
        const bool isWhole = piece.extent == Extent::Whole
            && (selected->ranges.isEmpty() || offsets_ == OffsetQuality::WrongAfterAstral);
        if (isWhole) {
            piece.slices.push_back({{0, -1}, {}, {}});
        } else {
            takeRanges(piece, *selected);
        }
    }
}

void Assembly::takeRanges(Piece &piece, const SelectedRanges &selected)
{
    isCertain_ = isCertain_ && selected.isComplete;
    for (const OffsetRange &range : selected.ranges) {
        piece.slices.push_back({range, {}, {}});
    }
    if (selected.hasEmpty && offsets_ == OffsetQuality::WrongAfterAstral) {
        piece.slices.push_back({{0, 0}, {}, {}}); // its text decides whether it is empty
    }
}

void Assembly::readTexts(const Level &level)
{
    std::vector<PendingAnswer> textAnswers;
    std::vector<std::pair<Piece *, PendingAnswer>> attributeAnswers;
    for (Piece *piece : level) {
        for (const Slice &slice : piece->slices) {
            const bool isAllNeeded = offsets_ == OffsetQuality::WrongAfterAstral;
            textAnswers.push_back(sendGetText(
                piece->object, isAllNeeded ? OffsetRange{0, -1} : slice.range, question_));
        }
        // Browsers also report inline boxes as sections.
        if (piece->role == Atspi::Role::Section && !piece->slices.empty()) {
            attributeAnswers.emplace_back(
                piece, question_.send(piece->object, Atspi::accessible, "GetAttributes"));
        }
    }
    auto answer = textAnswers.begin();
    for (Piece *piece : level) {
        for (Slice &slice : piece->slices) {
            takeText(slice, (answer++)->value<QString>().value_or(QString()));
        }
    }
    for (auto &[piece, attributes] : attributeAnswers) {
        const auto values = attributes.value<QMap<QString, QString>>();
        piece->isBlock = !values || !values->value(QStringLiteral("display")).startsWith(u"inline");
    }
}

void Assembly::takeText(Slice &slice, const QString &text)
{
    slice.text = text;
    if (offsets_ == OffsetQuality::WrongAfterAstral && slice.range.end >= 0) {
        isCertain_ = isCertain_ && isBeforeAstral(slice.range, text);
        slice.text = text.mid(slice.range.start, slice.range.end - slice.range.start);
    }
    // D-Bus strings end at the first NUL.
    isCertain_ = isCertain_ && slice.text.size() >= slice.range.end - slice.range.start;
    const qsizetype objects = slice.text.count(objectReplacement);
    length_ += slice.text.size() - objects;
    objects_ += static_cast<size_t>(objects);
    if (objects_ > maxEmbeddedObjects) {
        isCertain_ = false;
        slice.text.clear();
        return;
    }
    for (qsizetype i = objects; i > 0; --i) {
        slice.children.push_back(std::make_unique<Piece>());
    }
}

std::vector<Assembly::Embedded> Assembly::askForLinks(const Level &level)
{
    std::vector<Embedded> embedded;
    for (const Piece *piece : level) {
        for (const Slice &slice : piece->slices) {
            const bool isWhole = slice.range.end < 0;
            const ObjectOffsets objects = objectOffsets(slice.text);
            for (qsizetype i = 0; i < objects.offsets.size(); ++i) {
                const int offset = objects.offsets.at(i);
                Piece *child = slice.children[static_cast<size_t>(i)].get();
                const bool isInside = isWhole || (offset > 0 && offset < objects.length - 1);
                child->extent = isInside ? Extent::Whole : Extent::Selected;
                embedded.push_back({child, piece->object,
                                    question_.send(piece->object, Atspi::hypertext, "GetLinkIndex",
                                                   {slice.range.start + offset})});
            }
        }
    }
    return embedded;
}

Level Assembly::resolveChildren(const Level &level)
{
    std::vector<Embedded> embedded = askForLinks(level);
    for (Embedded &entry : embedded) {
        // No answer: the text contains images but no links.
        const auto answer = entry.answer.value<int>();
        const int index = answer.value_or(-1);
        isCertain_ = isCertain_ && (!answer || index >= 0);
        entry.answer = question_.send(entry.parent, Atspi::hypertext, "GetLink", {index});
    }
    std::erase_if(embedded, [this](Embedded &entry) {
        const auto link = entry.answer.value<ObjectReference>().value_or(ObjectReference());
        if (link.isNull()) {
            return true;
        }
        entry.answer = question_.send(link, Atspi::hyperlink, "GetObject", {0});
        return false;
    });
    Level next;
    for (Embedded &entry : embedded) {
        entry.child->object = entry.answer.value<ObjectReference>().value_or(ObjectReference());
        if (!entry.child->object.isNull()) {
            next.push_back(entry.child);
        }
    }
    return next;
}

QString Assembly::join(const Piece &root)
{
    Joined joined;
    append(root, joined);
    return joined.text;
}

void Assembly::append(const Piece &piece, Joined &joined)
{
    for (const Slice &slice : piece.slices) {
        joined.breakPending |= piece.isBlock || &slice != &piece.slices.front();
        auto child = slice.children.begin();
        for (const QChar unit : withoutListMarker(piece, slice)) {
            if (unit == objectReplacement) {
                append(**child++, joined);
            } else if (unit != byteOrderMark) {
                joined.append(unit);
            }
        }
    }
    joined.breakPending |= piece.isBlock;
}

} // namespace

std::optional<QString> embeddedText(const ObjectReference &object, const QList<OffsetRange> &ranges,
                                    OffsetQuality offsets, AtspiQuestion &question)
{
    Piece root;
    root.object = object;
    int left = static_cast<int>(maxSelectionLength) + 1;
    for (const OffsetRange &range : ranges) {
        const int length = std::min(range.end - range.start, left);
        if (length > 0) {
            root.slices.push_back({{range.start, range.start + length}, {}, {}});
            left -= length;
        }
    }
    Assembly assembly(offsets, question);
    assembly.fill(root);
    return assembly.isCertain() ? std::optional(Assembly::join(root)) : std::nullopt;
}

} // namespace vellumo
