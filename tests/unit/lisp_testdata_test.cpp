// The reader reads every LISP file of the shared test data (real programs written
// elsewhere) without a syntax error.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "lisp/reader.h"
#include "lisp/text.h"

namespace lisp::test {
namespace {

std::filesystem::path testdataDir() {
    if (const char* env = std::getenv("KELVO_TESTDATA")) return std::filesystem::path(env) / "lisp";
    // <source>/../shared/testdata
    return std::filesystem::path(KELVO_SOURCE_DIR).parent_path() / "shared" / "testdata" / "lisp";
}

TEST(LispTestdata, ReaderReadsEverySharedFile) {
    auto dir = testdataDir();
    ASSERT_TRUE(std::filesystem::is_directory(dir))
        << "no shared test data at " << dir << " (it belongs beside the project)";
    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(dir)) {
        if (entry.path().extension() != ".lsp") continue;
        ++files;
        std::wstring text = readTextFile(entry.path());
        Reader reader(text);
        int forms = 0;
        try {
            while (reader.next()) ++forms;
        } catch (const Error& e) {
            ADD_FAILURE() << entry.path() << ": " << e.what();
            continue;
        }
        EXPECT_GT(forms, 0) << entry.path();
    }
    EXPECT_GT(files, 10);
}

}  // namespace
}  // namespace lisp::test
