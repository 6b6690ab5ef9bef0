#ifndef SETUP_RECORD_H_
#define SETUP_RECORD_H_

#include <array>
#include <cstdint>
#include <variant>

#include "platform/framework/array.h"
#include "platform/framework/string.h"

/// The setup record: everything that a publisher configures. It lies in two files of the bundle.
/// `Data`, scrambled, has twelve positions, `TextData`, plain, has twenty-nine. A position means
/// what it does because of its number, and a missing one reads as empty:
///
///   Data      stamp$|~1$|~Welcome.app$|~F[24],2,2$|~$|~$|~1$|~$|~$|~0$|~0$|~
///   TextData  First line|Second line|#|A message|#|www.example.com|#|...
///
/// The tables below are the format: the installer reads by them, and make_setup writes by them. To
/// add a field, add it to the record and give it a position.
namespace zephin {

/// All fields; empty, 0 or false where the publisher gave nothing.
struct SetupRecord {
  String fExecuteAfterName;  ///< Program to start after the install; SpecialPath rewrites it.
  String fAgreement;         ///< Page that the user must accept before the install.
  bool fApplicationFolder = false;  ///< Install into the Applications folder, without a question.
  String fLogoPixelStr;             ///< Pixel string of the picture at the top right.
  String fMessage;                  ///< The main window's text.
  String fPicturePixelStr;          ///< Pixel string of the picture at the top left.
  String fURLActual;                ///< Target of the link.
  std::int64_t fLogoWidth = 0;      ///< Of a pixel string, in pixels, as all widths and heights.
  std::int64_t fLogoHeight = 0;
  std::int64_t fPictureWidth = 0;
  std::int64_t fPictureHeight = 0;
  String fURLDisplayed;           ///< Caption of the link.
  String fTimeStamp;              ///< Kept; nothing reads it.
  bool fPromptToReplace = false;  ///< Ask before an existing target folder is deleted.
  Array<String> fLabels;          ///< The publisher's wording by index, see captions.h.
  String fInfo;                   ///< Page behind the Info button.
  /// The bare name of the folder to install. A run makes it the full path once the place is known
  /// (with "Patch" at the end in a patch), and empties it when the user gives no place.
  String fTargetFolder;
  String fExecuteBeforeName;   ///< Program run first of all; SpecialPath rewrites it.
  String fBackgroundPixelStr;  ///< Pixel string of the window's backdrop.
  std::int64_t fBackgroundHeight = 0;
  std::int64_t fBackgroundWidth = 0;
  std::int64_t fEncryptionLen = 0;  ///< Kept; nothing reads it.
  String fCopyright;                ///< Line at the bottom of the window.
  String fWindowTitle;              ///< Title of the window.
  bool fCenterMessage = false;      ///< Centre the message.
  bool fInstallationPatch = false;  ///< The payload updates an installed folder.
  String fInstallChoices;           ///< Choices, one of which is installed; see selection_list.h.
  String fInstallOptions;           ///< Options, any of which are installed; see selection_list.h.
  String fMinOS;                    ///< Keyword of the oldest system; see requirements.h.
  String fMinRAM;                   ///< Keyword of the least memory; see requirements.h.
  String fCompletionURL;            ///< Address opened at the end.
  String fPreInstallNotes;          ///< Page shown first.
  String fPostInstallNotes;         ///< Page shown at the end.
  String fPostCopy;                 ///< Commands before and after the install; see copy_list.h.
};

// What a position holds, and where it goes in the record.

/// Read and ignored. Keeps the numbers of the positions behind it.
struct ReservedPosition {};
/// A text as it is.
struct TextPosition {
  String SetupRecord::*text;
};
/// True for exactly "1", false for everything else.
struct FlagPosition {
  bool SetupRecord::*flag;
};
/// A number in decimal; a text that begins with none is 0.
struct NumberPosition {
  std::int64_t SetupRecord::*number;
};
/// A picture triple "pixels,width,height", such as "F[24],2,2", or nothing.
struct PicturePosition {
  String SetupRecord::*pixels;
  std::int64_t SetupRecord::*width;
  std::int64_t SetupRecord::*height;
};
/// A page in its stored form, see DecodePage.
struct PagePosition {
  String SetupRecord::*page;
};
/// The captions by their index, with "|" between them; see captions.h.
struct CaptionsPosition {
  Array<String> SetupRecord::*captions;
};

struct Position {
  const char* field;  ///< Its name; of a picture that of the pixels; empty if reserved.
  std::variant<ReservedPosition, TextPosition, FlagPosition, NumberPosition, PicturePosition,
               PagePosition, CaptionsPosition>
      content = ReservedPosition{};
};

inline constexpr const char* kDataSeparator = "$|~";
inline constexpr std::array kDataPositions{
    Position{"fTimeStamp", TextPosition{&SetupRecord::fTimeStamp}},
    Position{"fApplicationFolder", FlagPosition{&SetupRecord::fApplicationFolder}},
    Position{"fExecuteAfterName", TextPosition{&SetupRecord::fExecuteAfterName}},
    Position{"fLogoPixelStr", PicturePosition{&SetupRecord::fLogoPixelStr, &SetupRecord::fLogoWidth,
                                              &SetupRecord::fLogoHeight}},
    Position{""},
    Position{"fPicturePixelStr",
             PicturePosition{&SetupRecord::fPicturePixelStr, &SetupRecord::fPictureWidth,
                             &SetupRecord::fPictureHeight}},
    Position{"fPromptToReplace", FlagPosition{&SetupRecord::fPromptToReplace}},
    Position{"fExecuteBeforeName", TextPosition{&SetupRecord::fExecuteBeforeName}},
    Position{"fBackgroundPixelStr",
             PicturePosition{&SetupRecord::fBackgroundPixelStr, &SetupRecord::fBackgroundWidth,
                             &SetupRecord::fBackgroundHeight}},
    Position{"fEncryptionLen", NumberPosition{&SetupRecord::fEncryptionLen}},
    Position{"fCenterMessage", FlagPosition{&SetupRecord::fCenterMessage}},
    Position{""},
};

inline constexpr const char* kTextDataSeparator = "|#|";
inline constexpr std::array kTextDataPositions{
    Position{"fAgreement", PagePosition{&SetupRecord::fAgreement}},
    Position{"fMessage", TextPosition{&SetupRecord::fMessage}},
    Position{"fURLActual", TextPosition{&SetupRecord::fURLActual}},
    Position{"fURLDisplayed", TextPosition{&SetupRecord::fURLDisplayed}},
    Position{"fInfo", PagePosition{&SetupRecord::fInfo}},
    Position{"fLabels", CaptionsPosition{&SetupRecord::fLabels}},
    Position{"fTargetFolder", TextPosition{&SetupRecord::fTargetFolder}},
    Position{"fCopyright", TextPosition{&SetupRecord::fCopyright}},
    Position{"fWindowTitle", TextPosition{&SetupRecord::fWindowTitle}},
    Position{""},
    Position{""},
    Position{""},
    Position{"fInstallationPatch", FlagPosition{&SetupRecord::fInstallationPatch}},
    Position{""},
    Position{""},
    Position{""},
    Position{""},
    Position{""},
    Position{""},
    Position{""},
    Position{""},
    Position{"fInstallChoices", TextPosition{&SetupRecord::fInstallChoices}},
    Position{"fInstallOptions", TextPosition{&SetupRecord::fInstallOptions}},
    Position{"fMinOS", TextPosition{&SetupRecord::fMinOS}},
    Position{"fMinRAM", TextPosition{&SetupRecord::fMinRAM}},
    Position{"fCompletionURL", TextPosition{&SetupRecord::fCompletionURL}},
    Position{"fPreInstallNotes", PagePosition{&SetupRecord::fPreInstallNotes}},
    Position{"fPostInstallNotes", PagePosition{&SetupRecord::fPostInstallNotes}},
    Position{"fPostCopy", TextPosition{&SetupRecord::fPostCopy}},
};

inline constexpr const char* kCaptionSeparator = "|";

/// Reads the contents of the two files, `data` in its plain form. No text is rejected: whatever is
/// missing reads as empty, and a bad number as 0.
SetupRecord ReadRecord(const String& data, const String& textData);

/// Marks a page that is stored as hexadecimal digits, in any letter case.
inline constexpr const char* kHexPageMarker = "$HTML$";

/// The text of a page in its stored form: Mac Roman with "|" for each line end, or, behind the
/// marker, the digits of its UTF-16 (low byte first). The result is labelled Mac Roman or UTF-8.
/// Where the marker is found further on, the first six characters of the text are lost all the
/// same, and the rest is read as digits.
///
///   43 61 66 8E 7C 4F 70 65 6E ("Caf\x8E|Open")  ->  "Café", "Open"
///   "$HTML$A903"                                 ->  "Ω"
String DecodePage(const String& stored);

}  // namespace zephin

#endif  // SETUP_RECORD_H_
