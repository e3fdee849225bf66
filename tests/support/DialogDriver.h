#pragma once

#include <tarqa/testkit/DialogDriver.h>
#include <tarqa/testkit/ShownDialog.h>

#include <string>

namespace support {

using tarqa::housekeeping::testkit::ShownDialog;

/// The kit's driver, whose problems fail the test: at once, and at the end for answers that were not asked
/// for.
class DialogDriver : public tarqa::housekeeping::testkit::DialogDriver
{
public:
    DialogDriver();
    ~DialogDriver() override;

private:
    void problem(const std::string& text) override;
};

} // namespace support
