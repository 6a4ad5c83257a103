// The operation codes and node layouts of a compiled pattern: a flat array of 32-bit words
// that the compiler writes and the matcher walks. One node may start with several entry codes.
#pragma once
#include <cstdint>

namespace RegExpPrivate {

using Word = std::uint32_t;

enum EOperation : Word {
    OpStart = 0, OpSucceed = 1, OpFail = 2,
    OpAlternative = 3, OpAlternativeRight = 4,
    OpEmpty = 5,
    OpSequence = 6, OpSequenceSecond = 7,
    OpLineStart = 8, OpLineEnd = 9, OpWordBoundary = 10, OpNotWordBoundary = 11,
    // Quantified atom, seven entries.
    OpLoopEnter = 12,       // pushes the loop record
    OpLoopReenter = 13,     // the sub-part matched once
    OpLoopGreedyResume = 14,  // a greedy iteration failed: restore spans, take the continuation
    OpLoopLazyResume = 15,    // the continuation failed: try one more iteration
    OpLoopRestoreSpans = 16,  // restore the spans saved by a lazy iteration and fail on
    OpLoopUndoCount = 17,     // restore the counts of the record and fail on
    OpLoopLeave = 18,         // drop the loop record and fail on
    OpUnit = 19, OpString = 20, OpAnyButLineEnd = 21,
    OpBitmapClass = 22, OpNegatedBitmapClass = 23,
    OpListClass = 24, OpNegatedListClass = 25,
    OpEmptyClass = 26, OpNegatedEmptyClass = 27,
    // Capture, four entries.
    OpCaptureEnter = 28, OpCaptureReenter = 29, OpCaptureRestore = 30, OpCaptureLeave = 31,
    // Lookahead and negative lookahead, three entries each.
    OpLookEnter = 32, OpLookMatched = 33, OpLookLeave = 34,
    OpNotLookEnter = 35, OpNotLookMatched = 36, OpNotLookFailed = 37,
    OpBackReference = 38,
    OpDigit = 39, OpNotDigit = 40, OpSpace = 41, OpNotSpace = 42, OpWord = 43, OpNotWord = 44,
    // A greedy loop over an atom of one unit without captures takes the layout of a quantified
    // atom with these two codes in front: it consumes the longest run at once and gives back
    // one unit per backtrack, with no loop record.
    OpRunEnter = 45, OpRunGiveBack = 46,
};

// Word offsets inside the nodes, counted from the node's first code word.
namespace Head {
constexpr int First = 4, CaptureCount = 5, Size = 6;
}
namespace Alternative {
constexpr int Next = 2, Left = 3, Right = 4, Size = 5;
}
namespace Sequence {
constexpr int Next = 2, First = 3, Second = 4, Size = 5;
}
namespace Loop {
constexpr int Next = 7, Sub = 8, Min = 9, Max = 10, Lazy = 11, FirstCapture = 12, CaptureCount = 13,
              Link = 14, Size = 15;
constexpr Word Unbounded = 0xFFFFFFFF;
}
namespace Capture {
constexpr int Next = 4, Sub = 5, Number = 6, Link = 7, Size = 8;
}
namespace Look {
constexpr int Next = 3, Sub = 4, Link = 5, Size = 6;
}
namespace NotLook {
constexpr int Next = 3, Sub = 4, FirstCapture = 5, CaptureCount = 6, Link = 7, Size = 8;
}
// Nodes with one code word: the continuation follows it, then the node's own data.
namespace Simple {
constexpr int Next = 1;
constexpr int Unit = 2;                                   // OpUnit, OpBackReference (capture number)
constexpr int Length = 2, Units = 3;                      // OpString: units packed two to a word
constexpr int BitmapFirst = 2, BitmapCount = 3, Bytes = 4;  // bitmap class: bytes packed four to a word
constexpr int ItemCount = 2, Items = 3;                   // list class: 16-bit units packed two to a word
}

// Kinds of class items, as stored in list classes.
enum EClassItemKind : Word {
    ItemUnit = 0, ItemRange = 1, ItemDigit = 2, ItemNotDigit = 3, ItemSpace = 4, ItemNotSpace = 5,
    ItemWord = 6, ItemNotWord = 7,
};

// Reads the 16-bit unit at `index` of the units packed two to a word from `words`.
inline Word PackedUnit(const Word* words, Word index) { return (words[index >> 1] >> ((index & 1) * 16)) & 0xFFFF; }
inline Word PackedByte(const Word* words, Word index) { return (words[index >> 2] >> ((index & 3) * 8)) & 0xFF; }

}  // namespace RegExpPrivate

namespace RegExpPrivate {

// Nodes that match exactly one unit of the text and hold no captures.
inline bool IsSingleUnitNode(Word operation) {
    return operation == OpUnit || operation == OpAnyButLineEnd ||
           (operation >= OpBitmapClass && operation <= OpNegatedEmptyClass) ||
           (operation >= OpDigit && operation <= OpNotWord);
}

}  // namespace RegExpPrivate
