#ifndef SETUP_BUNDLE_FILES_H_
#define SETUP_BUNDLE_FILES_H_

/// Names of the files of a setup. All lie in the bundle's Contents/Resources, but for the further
/// pieces of a split payload, which lie in the folder that holds the bundle.
namespace zephin {

inline constexpr const char* kDataFile = "Data";          ///< Outer record, scrambled.
inline constexpr const char* kTextDataFile = "TextData";  ///< Inner record, plain.
inline constexpr const char* kPayloadFile = "Data2";      ///< Payload in one file, scrambled.

/// Pieces of a split payload, joined with nothing between them: Data#1, Data#2, ... and Data#End.
inline constexpr const char* kPieceStem = "Data#";
inline constexpr const char* kFirstPieceFile = "Data#1";  ///< The only one in the bundle.
inline constexpr const char* kLastPieceFile = "Data#End";

}  // namespace zephin

#endif  // SETUP_BUNDLE_FILES_H_
