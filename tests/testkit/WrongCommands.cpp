#include "WrongCommands.h"

namespace sheet {

const std::vector<WrongCommand>& wrong_commands()
{
    static const std::vector<WrongCommand> s_all = [] {
        std::vector<WrongCommand> all;
        add_wrong_undo(all);
        add_wrong_endings(all);
        add_wrong_answers(all);
        add_wrong_merges(all);
        add_wrong_manners(all);
        return all;
    }();
    return s_all;
}

} // namespace sheet
