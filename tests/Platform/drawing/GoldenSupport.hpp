#pragma once
// Golden display lists: the list, printed as text, must match
// tests/golden/<folder>/<name>.txt. QRV_UPDATE_GOLDEN=1 rewrites the files
// instead (review the diff before committing).
#include "Platform/drawing/DisplayList.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

namespace qrv::platform::testing {

inline void expectGolden(const std::string& folder, const std::string& name, const DisplayList& list) {
    const std::string path = std::string(QRV_TEST_DATA) + "/golden/" + folder + "/" + name + ".txt";
    const std::string actual = toText(list);
    const char* update = std::getenv("QRV_UPDATE_GOLDEN");
    if (update && std::string(update) == "1") {
        std::ofstream(path, std::ios::binary) << actual;
        return;
    }
    std::ifstream in(path, std::ios::binary);
    ASSERT_TRUE(in) << "missing golden file " << path << " (run with QRV_UPDATE_GOLDEN=1 to create it)";
    std::stringstream expected;
    expected << in.rdbuf();
    EXPECT_EQ(actual, expected.str()) << "golden file " << path << " differs (QRV_UPDATE_GOLDEN=1 rewrites it)";
}

}  // namespace qrv::platform::testing
