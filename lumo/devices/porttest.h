#pragma once

#include "program/ports.h"
#include "widgets/holdbutton.h"

namespace lumo {

/// Why an output cannot be tested from the port page.
enum class TestBar {
    None,
    Laser,      ///< laser enable and its lock are switched at the device page only
    OutOfUse,   ///< the port is not in use or not assigned
    NotSaved,   ///< the page shows another assignment than the one that counts
    Shared,     ///< another output is assigned to the same bit
    Running,    ///< a program, a step or the closing of a stop is under way
    Locked,     ///< the safety lock of the device is closed
    AlreadyOn,  ///< somebody else has switched it on
};

/// Whether an output may be tested now. `isSaved`: the page shows the row as it is stored.
[[nodiscard]] TestBar testBar(I_PORT output, bool isSaved);
/// The reason in a sentence, with what to do.
[[nodiscard]] QString testBarText(TestBar bar);

/// A button that switches an output on while it is held. The output goes off when the hold ends (see
/// HoldButton), when the button is deleted, and after 30 s. A loss of power, an accepted start or step and
/// the application's end switch it off like a device that is on by hand; the button then writes nothing more.
class TestButton final : public HoldButton {
    Q_OBJECT
public:
    explicit TestButton(I_PORT output, QWidget* parent = nullptr);
    ~TestButton() override;

    /// Updates what the button says and whether it can be pressed; ends a test that is no longer allowed.
    void refresh(bool isSaved);
    /// The same whatever the button says.
    [[nodiscard]] QSize sizeHint() const override;

private:
    void switchOutput(bool on);
    void switchOn();
    void switchOff();

    const I_PORT output_;
    bool isSaved_ = false;
    bool isTesting_ = false;
    int test_ = 0;  ///< number of the present or last test
};

}  // namespace lumo
