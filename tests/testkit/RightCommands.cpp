#include "RightCommands.h"

namespace sheet {

const std::vector<RightCommand>& right_commands()
{
    static const std::vector<RightCommand> s_all = [] {
        std::vector<RightCommand> all;
        add_right_plain(all);
        add_right_special(all);
        return all;
    }();
    return s_all;
}

} // namespace sheet
