#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/errors/type_exceptions.hpp>
#include <vorm/assessments/platform/array_class_naming_service.hpp>
#include <vorm/assessments/platform/message_catalog.hpp>
#include <vorm/assessments/platform/utf.hpp>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <locale>
#include <memory>
#include <set>
#include <string>

namespace vorm::platform {
namespace {

std::u16string embeddedText(const std::string& key, std::vector<MessageId::Argument> arguments) {
    return MessageCatalog::global()->message({"quillet:assessments", key, std::move(arguments)},
                                             std::locale());
}

TEST(EmbeddedCatalog, HasOneTextOfItsOwnForEveryKey) {
    std::set<std::u16string> texts;
    for (const char* key : {"UnaryTypeError", "BinaryTypeError", "ExpressionEvaluationError",
                            "ExpressionEvaluationInternalError", "TimeValueMustIncrease"}) {
        const std::u16string text = embeddedText(key, {u"first", u"second"});
        EXPECT_EQ(text.find(u"quillet"), std::u16string::npos) << key;
        EXPECT_EQ(text.find(u'{'), std::u16string::npos) << key;
        texts.insert(text);
    }
    EXPECT_EQ(texts.size(), 5u);
}

TEST(EmbeddedCatalog, PutsArgumentsOfAnyKindInOrder) {
    EXPECT_EQ(embeddedText("BinaryTypeError", {std::string("Gr\xC3\xB6\xC3\x9F"
                                                           "e"),
                                               u"int8"}),
              u"The operation is not defined for operands of types 'Gr\u00F6\u00DFe' and 'int8'.");
    EXPECT_EQ(embeddedText("UnaryTypeError", {std::int64_t{-7}}),
              u"The operation is not defined for values of type '-7'.");
    EXPECT_EQ(embeddedText("NoSuchKey", {u"why"}), u"quillet:assessments:NoSuchKey 'why'");
}

TEST(Catalog, HostReplacesItAndGetsTheEmbeddedOneBack) {
    struct Shouting : MessageCatalog {
        std::u16string message(const MessageId& id, const std::locale&) const override {
            return toUtf16(id.key + "!");
        }
    };
    MessageCatalog::install(std::make_shared<Shouting>());
    const assessments::AssessmentInternalException shouted("x");
    MessageCatalog::install(nullptr);
    EXPECT_STREQ(shouted.what(), "ExpressionEvaluationInternalError!");
    EXPECT_STRNE(assessments::AssessmentInternalException("x").what(), shouted.what());
}

TEST(NamingService, HostReplacesIt) {
    struct Numbered : ArrayClassNamingService {
        const char* className(std::int32_t id) const override { return id == 6 ? "six" : nullptr; }
    };
    EXPECT_EQ(assessments::ArrayClassIdName(15), "uint64");
    ArrayClassNamingService::install(std::make_shared<Numbered>());
    EXPECT_EQ(assessments::ArrayClassIdName(6), "six");
    EXPECT_EQ(assessments::ArrayClassIdName(7), "");
    EXPECT_EQ(assessments::ArrayClassIdName(-2357), "half");
    ArrayClassNamingService::install(nullptr);
    for (const std::int32_t unknown : {-1, 0, 4, 5, 16}) {
        EXPECT_EQ(assessments::ArrayClassIdName(unknown), "") << unknown;
    }
}

// Made before any service, and so destroyed after whatever of them is destroyed at all.
struct LastWords {
    bool wanted = false;
    ~LastWords() {
        if (wanted) {
            const assessments::AssessmentTypeException failure(
                assessments::AssessmentTypeException::typeTAG<double>{});
            std::fputs(failure.what(), stderr);
        }
    }
} lastWords;

template <class Service>
struct Mortal : Service {
    ~Mortal() override { std::fputs("A service in force was destroyed. ", stderr); }
};

TEST(Services, AreThereForFailuresWhileTheProcessEnds) {
    struct Catalog : Mortal<MessageCatalog> {
        std::u16string message(const MessageId& id, const std::locale&) const override {
            return u"Not defined for " + std::get<std::u16string>(id.arguments.at(0));
        }
    };
    struct Names : Mortal<ArrayClassNamingService> {
        const char* className(std::int32_t) const override { return "anything"; }
    };
    const auto endWithAFailure = [] {
        MessageCatalog::install(std::make_shared<Catalog>());
        ArrayClassNamingService::install(std::make_shared<Names>());
        lastWords.wanted = true;
        std::exit(0);
    };
    EXPECT_EXIT(endWithAFailure(), testing::ExitedWithCode(0), "^Not defined for anything$");
}

TEST(Utf, ReplacesWhatIsIllFormed) {
    EXPECT_EQ(toUtf16("a\xF0\x9F\x9A\x97z"), u"a\U0001F697z");
    EXPECT_EQ(toUtf8(u"a\U0001F697z"), "a\xF0\x9F\x9A\x97z");
    const std::u16string replaced = toUtf16("a\xFFz\xC3");
    EXPECT_EQ(replaced.front(), u'a');
    EXPECT_NE(replaced.find(u'\uFFFD'), std::u16string::npos);
    EXPECT_EQ(toUtf8(std::u16string{u'a', 0xD800, u'z'}), "a\xEF\xBF\xBDz");
}

}  // namespace
}  // namespace vorm::platform
