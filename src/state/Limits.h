#pragma once

namespace zu {

// Sizes that the instrument family, the settings file and the data file share.
inline constexpr int kMaxPods = 20;         ///< pods (= sample buffers) of the largest instrument
inline constexpr int kMaxChannels = 160;    ///< eight channels a pod
inline constexpr int kMaxBoards = 4;        ///< trigger-word slices, one a board
inline constexpr int kGroupCount = 30;      ///< records in the group table
inline constexpr int kGroupSlots = 160;     ///< channel slots in one group record
inline constexpr int kGroupValueBits = 32;  ///< channels of a group that make its integer value
inline constexpr int kMaxLines = 231;       ///< display lines in use at most
inline constexpr int kLineSlots =
    232;  ///< slots of the display list; the spacer count reads one beyond the last line
inline constexpr int kFirstGroupLine = 160;   ///< line sources 160..189 are groups 0..29
inline constexpr int kFirstSpacerLine = 190;  ///< line sources from here on are spacers
inline constexpr int kTimingColumns = 8;      ///< information columns of the Timing view
inline constexpr int kCursorSlots = 6;        ///< A, B, C, D, T and one that is never drawn
inline constexpr int kCursorT = 4;            ///< index of the trigger cursor
inline constexpr int kTrigWords = 16;         ///< trigger words and sequence levels
inline constexpr int kTrigWordText = 46;      ///< bytes of one slice's text with its terminator
inline constexpr int kTrigListSlots = 26;  ///< room in the level lists: a settings line may carry 25 entries
inline constexpr int kThresholds = 12;     ///< threshold and pattern voltage codes, one a pod pair
inline constexpr int kRateCodes = 35;      ///< rate codes 0..34
inline constexpr int kSpiSlots = 3;        ///< SPI buses decoded at the same time
inline constexpr int kTranslateEntries = 513;  ///< entries of the translate table
inline constexpr int kAddressCandidates = 11;  ///< places where a board may answer
inline constexpr int kQualifierWords = 16;     ///< external clock qualifier words
inline constexpr int kQualifierText = 10;  ///< bytes of one qualifier slot: nine characters and a terminator

}  // namespace zu
