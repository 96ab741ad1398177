// SPDX-License-Identifier: Apache-2.0
#include "cli/Command.h"

namespace cli {

const std::vector<Command>& commands()
{
    static const std::vector<Command> all{listCommand(), forceCommand(), setCommand()};
    return all;
}

} // namespace cli
