// The words of a batch's result, from how many items succeeded and failed. Any thread.
//
// Each operation has four keys. One item, or none, takes the singular text as it stands; several take the plural text,
// formatted with their number. Nothing succeeded: the failed text alone; nothing failed: the success text alone; else both
// lines, success first.
#pragma once

#include <cstdint>

#include "toolkit/NSString.h"

struct ResultKeys {
    const char *successOne, *successSeveral, *failedOne, *failedSeveral;
};

namespace results {

constexpr ResultKeys importMusic{"Import_music_successfully", "Import_music_successfullys", "Import_music_failed", "Import_music_faileds"};
constexpr ResultKeys importVideos{"Import_Video_successfully", "Import_Video_successfullys", "Import_Video_failed", "Import_Video_faileds"};
constexpr ResultKeys importRingtones{"Import_ringtones_successfully", "Import_ringtones_successfullys", "Import_ringtones_failed",
                                     "Import_ringtones_faileds"};
constexpr ResultKeys importBooks{"Import_book_successfully", "Import_book_successfullys", "Import_book_failed", "Import_book_faileds"};
constexpr ResultKeys importPhotos{"Import_photo_successfully", "Import_photo_successfullys", "Import_photo_failed", "Import_photo_faileds"};
constexpr ResultKeys exportMusic{"Export_music_successfully", "Export_music_successfullys", "Export_music_failed", "Export_music_faileds"};
// The singular failed text of a video export is the deletion's; kept: there is no text of its own.
constexpr ResultKeys exportVideos{"Export_Video_successfully", "Export_Video_successfullys", "Delete_Video_failed", "Export_Video_faileds"};
constexpr ResultKeys exportRingtones{"Export_ringtones_successfully", "Export_ringtones_successfullys", "Export_ringtones_failed",
                                     "Export_ringtones_faileds"};
constexpr ResultKeys exportBooks{"Export_book_successfully", "Export_book_successfullys", "Export_book_failed", "Export_book_faileds"};
constexpr ResultKeys exportPhotos{"Export_photo_successfully", "Export_photo_successfullys", "Export_photo_failed", "Export_photo_faileds"};
constexpr ResultKeys musicToITunes{"Export_iTunes_successfully", "Export_iTunes_successfullys", "Export_iTunes_failed",
                                   "Export_iTunes_faileds"};
constexpr ResultKeys videosToITunes{"Export_Videos_iTunes_successfully", "Export_Videos_iTunes_successfullys",
                                    "Export_Videos_iTunes_failed", "Export_Videos_iTunes_faileds"};
constexpr ResultKeys deleteMusic{"Delete_music_successfully", "Delete_music_successfullys", "Delete_music_failed", "Delete_music_faileds"};
constexpr ResultKeys deleteVideos{"Delete_Video_successfully", "Delete_Video_successfullys", "Delete_Video_failed", "Delete_Video_faileds"};
constexpr ResultKeys deleteRingtones{"Delete_ringtones_successfully", "Delete_ringtones_successfullys", "Delete_ringtones_failed",
                                     "Delete_ringtones_faileds"};
constexpr ResultKeys deleteBooks{"Delete_book_successfully", "Delete_book_successfullys", "Delete_book_failed", "Delete_book_faileds"};
constexpr ResultKeys deletePhotos{"Delete_photo_successfully", "Delete_photo_successfullys", "Delete_photo_failed", "Delete_photo_faileds"};
constexpr ResultKeys importContacts{"ContactView_importSuccess", "ContactView_importSuccess(s)", "ContactView_importFailed",
                                    "ContactView_importFailed(s)"};
constexpr ResultKeys deleteContacts{"ContactView_deleteSuccess", "ContactView_deleteSuccess(s)", "ContactView_deleteFailed",
                                    "ContactView_deleteFailed(s)"};
constexpr ResultKeys deleteBookmarks{"BMView_deleteResult_success", "BMView_deleteResults_success", "BMView_deleteResult_fail",
                                     "BMView_deleteResults_fail"};

}  // namespace results

[[nodiscard]] NSString successText(const ResultKeys &keys, std::int64_t succeeded);
[[nodiscard]] NSString failedText(const ResultKeys &keys, std::int64_t failed);
// `total` items, of which `succeeded` did; the rest counts as failed.
[[nodiscard]] NSString resultText(const ResultKeys &keys, std::int64_t succeeded, std::int64_t total);

// "1.5 MB / 3 MB".
[[nodiscard]] NSString sizesText(std::int64_t currentBytes, std::int64_t totalBytes);
// 0 where there is no whole.
[[nodiscard]] double percentOf(std::int64_t part, std::int64_t whole);
