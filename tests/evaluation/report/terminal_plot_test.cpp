#include "evaluation/recording/recorded.hpp"

#include <vorm/evaluation/assessment/assess.hpp>
#include <vorm/evaluation/report/terminal_plot.hpp>

#include <gtest/gtest.h>

namespace vorm::evaluation {
namespace {

std::string plotOf(const std::string& assessments, const std::string& table,
                   const TerminalPlotStyle& style = {}) {
    const AssessmentFile file = parseAssessmentFile(assessments, "a.toml");
    const Recording recording = test::read(table, file.layout);
    RunOptions options;
    options.explain = true;
    return terminalPlot(assess(file, recording, options).assessments.front(), recording, style);
}

TEST(TerminalPlot, ShowsTheSignalsToBlameAroundTheFirstFailure) {
    TerminalPlotStyle style;
    style.width = 40;
    style.height = 3;
    EXPECT_EQ(plotOf(R"toml(
        signals = { x = { interpolation = "linear", unit = "m/s" } }
        assessment = [{ name = "n", formula = "on -> x < 5" }])toml",
                     "t,x,on\n0,0,false\n4,0,false\n10,10,true\n12,0,true\n14,0,true\n", style),
              R"(x [m/s]
          10 │▄▄▄█▀▀▀▀▀▀█▄▄▄            
             │             ▀▀▀▀█▄▄▄     
           0 │                    ▀▀▀▀█▄
       fails          ━━━━━━━━━━        
              9 s                   12 s
)");
}

TEST(TerminalPlot, KeepsWhatIsInfiniteApart) {
    TerminalPlotStyle style;
    style.width = 40;
    style.height = 4;
    EXPECT_EQ(plotOf(R"(assessment = [{ name = "n", formula = "x < 2" }])",
                     "t,x\n0,1\n1,inf\n2,2\n3,-inf\n4,1\n", style),
              R"(x
         inf │      █▀▀▀▀▀▀             
           2 │      █      ▀▀▀▀▀▀█      
           1 │▄▄▄▄▄▄█            █     ▄
        -inf │                   █▄▄▄▄▄█
       fails        ━━━━━━━━━━━━━━      
              0 s                    4 s
)");
}

TEST(TerminalPlot, IsNothingWhereNothingFails) {
    EXPECT_EQ(plotOf(R"(assessment = [{ name = "n", formula = "x < 5" }])", "t,x\n0,1\n1,2\n"), "");
}

}  // namespace
}  // namespace vorm::evaluation
