#include "HNManagerPlugin/Classes/PublicProgressWindow/ResultText.h"

#include <gtest/gtest.h>

#include "tests/support/PluginWorld.h"

namespace {

TEST(ResultText, readsAsItsCountsSay) {
    struct {
        const char *name;
        ResultKeys keys;
        std::int64_t succeeded, total;
        const char *text;
    } rows[] = {{"allOfOne", results::importVideos, 1, 1, "one in %ld"}, {"allOfSeveral", results::importVideos, 3, 3, "3 in"},
                {"oneOfThree", results::importVideos, 1, 3, "one in %ld\n2 not in"}, {"twoOfThree", results::importVideos, 2, 3, "2 in\none not in %ld"},
                {"noneOfOne", results::importVideos, 0, 1, "one not in %ld"}, {"noneOfTwo", results::importVideos, 0, 2, "2 not in"},
                {"emptyBatch", results::importVideos, 0, 0, "one not in %ld"}, {"moreThanAsked", results::importVideos, 2, 1, "2 in\none not in %ld"},
                {"failedVideoExportBorrowsTheDeletionsText", results::exportVideos, 0, 1, "one not deleted"},
                {"severalFailedVideoExportsDoNot", results::exportVideos, 1, 3, "one out\n2 not out"},
                {"contacts", results::importContacts, 0, 4, "4 contacts not in"}, {"bookmarks", results::deleteBookmarks, 5, 5, "5 gone"}};
    PluginWorld world;
    // the singular texts are taken as they stand, whatever is in them
    world.setTexts({{"Import_Video_successfully", "one in %ld"}, {"Import_Video_successfullys", "%ld in"},
                    {"Import_Video_failed", "one not in %ld"}, {"Import_Video_faileds", "%ld not in"},
                    {"Export_Video_successfully", "one out"}, {"Export_Video_faileds", "%ld not out"},
                    {"Delete_Video_failed", "one not deleted"}, {"ContactView_importFailed(s)", "%ld contacts not in"},
                    {"BMView_deleteResults_success", "%ld gone"}});
    for (const auto &[name, keys, succeeded, total, text] : rows)
        EXPECT_EQ(resultText(keys, succeeded, total), NSString(text)) << name;
}

TEST(Percent, ofNothingIsNothing) {
    EXPECT_EQ(percentOf(5, 0), 0);
    EXPECT_EQ(percentOf(1, 4), 25);
}

}  // namespace
