// Saved states share their points with the current path; nothing of that may be seen.
#include "graphics/GraphicsStates.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "tests/support/Interpretation.h"

namespace orxtests {
namespace {

using orxeps::GraphicsStates;
using orxeps::PathPoint;
using orxeps::PathPointKind;

// States that copy everything.
struct PlainState {
  std::vector<PathPoint> path;
  double currentX = 0;
  std::int32_t subpathStart = 0;
  float lineWidth = 0.1F;
};

void ExpectAlike(const GraphicsStates& states, const PlainState& model, unsigned step) {
  ASSERT_EQ(states.PathCount(), model.path.size()) << "step " << step;
  for (std::size_t i = 0; i < model.path.size(); ++i) {
    ASSERT_EQ(states.PathAt(i + 1).x, model.path[i].x) << "step " << step << " point " << i;
    ASSERT_EQ(states.PathAt(i + 1).kind, model.path[i].kind) << "step " << step << " point " << i;
  }
  ASSERT_EQ(states.current.currentX, model.currentX);
  ASSERT_EQ(states.current.subpathStart, model.subpathStart);
  ASSERT_EQ(states.current.lineWidth, model.lineWidth);
}

// Random steps; `burst` points at a time, so that paths also outgrow the blocks they are kept in.
void CompareWithCopies(unsigned seed, unsigned burst, unsigned steps) {
  std::mt19937 random(seed);
  orxeps::MemoryBudget budget;
  GraphicsStates states(budget);
  PlainState model;
  std::vector<PlainState> saved;
  for (unsigned step = 0; step < steps; ++step) {
    switch (random() % 8) {
      case 0:
        ASSERT_TRUE(states.Save());
        saved.push_back(model);
        break;
      case 1:
        states.Restore();
        if (!saved.empty()) {
          model = saved.back();
          saved.pop_back();
        }
        break;
      case 2:
        states.ClearPath();
        model.path.clear();
        break;
      case 3:
        states.current.lineWidth = model.lineWidth = static_cast<float>(random() % 100);
        break;
      default:
        for (unsigned i = random() % burst; i <= burst; ++i) {
          const PathPoint point = {static_cast<double>(random()), 0.5,
                                   random() % 4 ? PathPointKind::Line : PathPointKind::Move};
          states.AppendPoint(point.x, point.y, point.kind);
          model.path.push_back(point);
          model.currentX = point.x;
          if (point.kind == PathPointKind::Move) {
            model.subpathStart = static_cast<std::int32_t>(model.path.size());
          }
        }
    }
    ASSERT_EQ(states.SavedCount(), saved.size());
    ASSERT_NO_FATAL_FAILURE(ExpectAlike(states, model, step));
  }
}

TEST(GraphicsStates, BehaveAsIfSavingCopiedThePath) {
  for (unsigned seed = 0; seed < 200; ++seed) {
    ASSERT_NO_FATAL_FAILURE(CompareWithCopies(seed, 2, 100)) << "seed " << seed;
  }
  for (unsigned seed = 0; seed < 10; ++seed) {
    ASSERT_NO_FATAL_FAILURE(CompareWithCopies(seed, 700, 60)) << "seed " << seed;
  }
}

TEST(GraphicsStates, TheProgramSeesWhatItSaved) {
  Interpretation interpretation(
      "1 1 moveto gsave 2 2 lineto gsave 3 3 lineto newpath 4 4 lineto closepath grestore\n"
      "5 5 lineto grestore 6 6 lineto closepath grestore grestore currentpoint");
  static_cast<void>(interpretation.Draw());
  EXPECT_EQ(interpretation.Path(), "M 1 1 L 6 6 L 1 1");
  EXPECT_EQ(interpretation.Stack(), "1.0 1.0");
  ExpectOutcomes(
      {{"2 2 scale gsave 3 3 scale grestore matrix currentmatrix", "[2.0 0.0 0.0 2.0 0.0 0.0]"}});
}

}  // namespace
}  // namespace orxtests
