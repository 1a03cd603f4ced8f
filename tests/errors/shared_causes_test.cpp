// Failures that share their causes are destroyed by several threads. A build with the thread
// sanitizer shows whether the last owner of a cause waits for what the others did with it.

#include <vorm/assessments/errors/assessment_exception.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>

namespace vorm::assessments {
namespace {

constexpr int links = 20;
std::atomic<int> linksAlive = 0;

class Link : public AssessmentInternalException {
public:
    explicit Link(const std::shared_ptr<AssessmentException>& cause)
        : AssessmentInternalException("link", cause) {
        ++linksAlive;
    }
    Link(const Link&) = delete;
    ~Link() override { --linksAlive; }
};

TEST(Threads, DestroyFailuresThatShareTheirCauses) {
    constexpr int rounds = 100;
    for (int round = 0; round < rounds; ++round) {
        std::shared_ptr<AssessmentException> chain;
        for (int link = 0; link < links; ++link) {
            chain = std::make_shared<Link>(chain);
        }
        const auto readAndDestroy = [](std::unique_ptr<AssessmentException> failure) {
            int depth = 0;
            for (auto cause = failure->getCause().get(); cause != nullptr;
                 cause = cause->getCause().get()) {
                ++depth;
            }
            EXPECT_EQ(depth, links);
        };
        std::thread left(readAndDestroy,
                         std::make_unique<AssessmentInternalException>("left", chain));
        std::thread right(readAndDestroy,
                          std::make_unique<AssessmentInternalException>("right", chain));
        chain.reset();
        left.join();
        right.join();
        EXPECT_EQ(linksAlive, 0);
    }
}

}  // namespace
}  // namespace vorm::assessments
