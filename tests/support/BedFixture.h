#pragma once
// A test whose code under test reaches the machine through Platform(): the bed's platform is
// the installed one while the test runs and goes back into the bed afterwards, so the bed
// can clean up with it.
#include <gtest/gtest.h>

#include "tests/support/TestBed.h"

namespace tovel::test {

class BedFixture : public ::testing::Test {
protected:
    void SetUp() override {
        bed_ = MakeTestBed();
        previous_ = InstallPlatform(std::move(bed_->platform));
    }
    void TearDown() override {
        bed_->platform = InstallPlatform(std::move(previous_));
        bed_.reset();
    }

    std::unique_ptr<TestBed> bed_;
    std::unique_ptr<clsPlatform> previous_;
};

} // namespace tovel::test
