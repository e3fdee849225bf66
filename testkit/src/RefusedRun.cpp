#include "RefusedRun.h"

namespace tarqa::housekeeping::testkit {

RefusedRun::RefusedRun()
{
    DocumentHistoryMsg::subscribe(this, Qt::DirectConnection);
}

RefusedRun::~RefusedRun() = default;

void RefusedRun::handle_message(housekeeping::DocumentHistoryMsg&)
{
    throw Refusal();
}

} // namespace tarqa::housekeeping::testkit
