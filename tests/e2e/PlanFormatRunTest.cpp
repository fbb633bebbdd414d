// `--plan --format=json|dot`: the plan for tools. The JSON must parse and carry every product
// of the catalogue with its installation step; the graph must mark a circle and a code the
// disc does not have; a format nobody knows is refused before anything runs.
#include <nlohmann/json.hpp>

#include <set>

#include "tests/e2e/SetupRun.h"

namespace tovel {
namespace {

class PlanFormatRun : public test::SetupRun {
protected:
    // Two products waiting on each other, one of them also on a code and a link to a code
    // that no file of the disc has.
    void AddCircleAndMissingCode() {
        const std::string languages = "[LANGUAGES]\r\nLanguageB=English\r\nLanguageX=English\r\n";
        WriteDisc("Products/Loop/LoopA.ssf",
                  "[GENERAL]\r\nFileType=ssf\r\nProductCode=LOOPA\r\n" + languages +
                      "[English]\r\nDescription=Loop A\r\nSetupFile=a.exe\r\n"
                      "[DEPENDENCIES]\r\nDependence1=LOOPB\r\nDependence2=NOWHERE\r\n"
                      "[SETUP_DEPENDENCIES]\r\nType1=toggle\r\nProductCode1=GHOST\r\n");
        WriteDisc("Products/Loop/LoopB.ssf",
                  "[GENERAL]\r\nFileType=ssf\r\nProductCode=LOOPB\r\n" + languages +
                      "[English]\r\nDescription=Loop B\r\nSetupFile=b.exe\r\n[DEPENDENCIES]\r\nDependence1=LOOPA\r\n");
    }
};

TEST_F(PlanFormatRun, JsonHoldsEveryProductWithItsStep) {
    UseSampleDisc();
    AddCircleAndMissingCode();
    ASSERT_EQ(Run({}, {"--plan", "--format=json"}), 0) << Output();
    const auto plan = nlohmann::json::parse(Output(), nullptr, false);
    ASSERT_FALSE(plan.is_discarded()) << "not JSON:\n" << Output();
    EXPECT_EQ(plan["schema"], 1);
    std::set<std::string> codes;
    int order = 0;
    for (const auto& product : plan["products"]) {
        EXPECT_EQ(product["order"], ++order);
        codes.insert(product["code"].get<std::string>());
        ASSERT_TRUE(product["step"].is_object()) << product["code"];
        EXPECT_EQ(product["step"]["position"], order);
        // A step that is carried out starts a program; one that is skipped says why.
        if (product["step"]["skip"].get<bool>()) EXPECT_FALSE(product["step"]["skipReason"].get<std::string>().empty());
        else EXPECT_FALSE(product["step"]["commandLine"].get<std::string>().empty());
    }
    for (const char* code : {"TOVBASE", "LICMGR", "HMIRT", "WEBPANEL", "LOOPA", "LOOPB"}) EXPECT_TRUE(codes.contains(code)) << code;
    // The circle is installed last, in the order found.
    ASSERT_GE(plan["products"].size(), 2u);
    EXPECT_EQ(plan["products"][plan["products"].size() - 2]["code"], "LOOPA");
    EXPECT_EQ(plan["cycles"]["products"], nlohmann::json::parse(R"([["LOOPA","LOOPB"]])"));
    EXPECT_EQ(plan["missing"], nlohmann::json::parse(R"([{"from":"LOOPA","code":"NOWHERE","kind":"after"},
                                                          {"from":"LOOPA","code":"GHOST","kind":"link"}])"));
    EXPECT_FALSE(plan["packets"].empty());
    EXPECT_EQ(Output().find("Machine:"), std::string::npos) << "only the document belongs on the output";
}

TEST_F(PlanFormatRun, DotMarksCirclesAndMissingCodes) {
    WriteDisc("Setups.ini", "[SETTINGS]\r\nPath=Products\r\n");
    AddCircleAndMissingCode();
    ASSERT_EQ(Run({}, {"--plan", "--format=dot"}), 0) << Output();
    const std::string& dot = Output();
    EXPECT_EQ(dot.rfind("digraph catalogue {", 0), 0u) << dot;
    EXPECT_EQ(dot.substr(dot.size() - 2), "}\n");
    EXPECT_NE(dot.find("\"product:LOOPA\" [label=\"1. LOOPA\\nLoop A\\n(in a circle)\", color=red"), std::string::npos) << dot;
    EXPECT_NE(dot.find("\"product:LOOPB\" -> \"product:LOOPA\" [color=red, penwidth=2, label=\"after\", dir=back]"), std::string::npos) << dot;
    EXPECT_NE(dot.find("\"missing:NOWHERE\" [label=\"NOWHERE\\n(not on this disc)\", color=red"), std::string::npos) << dot;
    EXPECT_NE(dot.find("\"missing:NOWHERE\" -> \"product:LOOPA\" [color=red, style=dashed, label=\"after\", dir=back]"), std::string::npos) << dot;
    EXPECT_NE(dot.find("\"product:LOOPA\" -> \"missing:GHOST\""), std::string::npos) << dot;
    EXPECT_NE(dot.find("\"product:LOOPA\" -> \"product:LOOPB\" [color=gray70"), std::string::npos) << "the order chain\n" << dot;
}

TEST_F(PlanFormatRun, UnknownFormatIsAUsageError) {
    UseSampleDisc();
    EXPECT_EQ(Run({}, {"--plan", "--format=yaml"}), 2);
    EXPECT_NE(Output().find("--format is json or dot, not \"yaml\""), std::string::npos) << Output();
    EXPECT_EQ(Run({}, {"--format=json"}), 2);
    EXPECT_NE(Output().find("belongs to --plan"), std::string::npos) << Output();
    EXPECT_FALSE(std::filesystem::exists(Machine() / "machine.ini")) << "nothing runs after a usage error";
}

} // namespace
} // namespace tovel
