// SPDX-License-Identifier: MIT
// The grid grdMain of a form, for the suites of a grid.
#include "tests/conformance/form_suites.h"

namespace conformance {

namespace {

class MainGrid final : public GridUnderTest {
public:
    explicit MainGrid(std::unique_ptr<FormUnderTest> form) : Form_(std::move(form)) {
        Settle();
        Raised = {};
        Raised.When["grdMain_RowColChange"] = [this] { Moved(); };
        Raised.Draw = [this](CellCanvas&, const DrawnCell& cell) {
            if (!cell.OfTitle)
                Draws(cell);
        };
    }
    MainGrid(const MainGrid&) = delete;
    MainGrid& operator=(const MainGrid&) = delete;
    ~MainGrid() override { Raised = {}; }

    OwnerDrawGrid& Grid() override { return Form_->Record().grdMain; }
    void Settle() override { Form_->Record().runTime.DoEvents(); }

private:
    const std::unique_ptr<FormUnderTest> Form_;
};

} // namespace

GridFactory MainGridOf(const FormFactory& factory) {
    return {factory.Name, [factory] { return std::make_unique<MainGrid>(factory.Make()); }};
}

} // namespace conformance
