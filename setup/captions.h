#ifndef SETUP_CAPTIONS_H_
#define SETUP_CAPTIONS_H_

#include <array>
#include <cstddef>
#include <cstdint>

namespace zephin {

/// The captions and messages that a publisher can reword. The value is the index in the record's
/// list of captions, where an empty entry keeps the built-in wording.
enum class Caption : std::int8_t {
  NotWritable,
  Quit,
  Install,
  Cancel,
  Ok,
  Accept,
  Info,
  AgreementTitle,
  InfoTitle,
  Unused9,
  ReplaceTitle,
  ReplaceFirst,
  ReplaceSecond,
  Failed,
  FolderTitle,
  FolderSelect,
  NextDisc,
  Unused17,
  PatchNoTarget,
  Installing,
  Unused20,
  PleaseWait,
  Downloading,
  ChoiceTitle,
  OptionsTitle,
  PreNotesTitle,
  ReleaseNotesTitle,
};

/// What is known of one caption.
struct CaptionRow {
  Caption caption;
  const char* name;     ///< In a publisher's setup file; empty for an index that nothing uses.
  const char* wording;  ///< Built in; empty where the desktop's own dialog supplies it.
};

/// All captions in the order of their indexes. A record always brings all of them, since the
/// program looks each one up without a test.
inline constexpr std::array kCaptions{
    CaptionRow{Caption::NotWritable, "notWritable", "Cannot write to selected location."},
    CaptionRow{Caption::Quit, "quit", "Quit"},
    CaptionRow{Caption::Install, "install", "Install"},
    CaptionRow{Caption::Cancel, "cancel", "Cancel"},
    CaptionRow{Caption::Ok, "ok", "OK"},
    CaptionRow{Caption::Accept, "accept", "I Agree"},
    CaptionRow{Caption::Info, "info", "Info"},
    CaptionRow{Caption::AgreementTitle, "agreementTitle", "License Agreement"},
    CaptionRow{Caption::InfoTitle, "infoTitle", "Information"},
    CaptionRow{Caption::Unused9, "", ""},
    CaptionRow{Caption::ReplaceTitle, "replaceTitle", "Confirmation"},
    CaptionRow{Caption::ReplaceFirst, "replaceFirst", "Destination folder already exists."},
    CaptionRow{Caption::ReplaceSecond, "replaceSecond", "Delete folder to continue?"},
    CaptionRow{Caption::Failed, "failed", "Installation Failed"},
    CaptionRow{Caption::FolderTitle, "folderTitle", ""},
    CaptionRow{Caption::FolderSelect, "folderSelect", "Select"},
    CaptionRow{Caption::NextDisc, "nextDisc",
               "Insert next CD.  When you see the CD icon, click YES to continue or NO to quit."},
    CaptionRow{Caption::Unused17, "", ""},
    CaptionRow{Caption::PatchNoTarget, "patchNoTarget",
               "Patch Failed.  No installation folder exists."},
    CaptionRow{Caption::Installing, "installing", "Install in Progress..."},
    CaptionRow{Caption::Unused20, "", ""},
    CaptionRow{Caption::PleaseWait, "pleaseWait", "Please Wait"},
    CaptionRow{Caption::Downloading, "downloading", "Installing Options"},
    CaptionRow{Caption::ChoiceTitle, "choiceTitle", "Pick One Choice"},
    CaptionRow{Caption::OptionsTitle, "optionsTitle", "Select Options"},
    CaptionRow{Caption::PreNotesTitle, "preNotesTitle", "Pre-Installation Notes"},
    CaptionRow{Caption::ReleaseNotesTitle, "releaseNotesTitle", "Release Notes"},
};

/// Index of a caption in the record's list, from 0.
constexpr std::int64_t IndexOf(Caption caption) {
  return static_cast<std::int64_t>(caption);
}

/// The program's own wording of a caption.
constexpr const char* BuiltInWording(Caption caption) {
  return kCaptions.at(static_cast<std::size_t>(caption)).wording;
}

}  // namespace zephin

#endif  // SETUP_CAPTIONS_H_
