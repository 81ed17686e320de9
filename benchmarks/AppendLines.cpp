// Adds lines to a file, which is opened, flushed and closed for each: AppendLines NUMBER FILE

#include <cstdlib>
#include <fstream>

int main (int, char* argv[])
{
    for (auto lines = std::atoi (argv[1]); lines > 0; --lines)
    {
        std::ofstream file (argv[2], std::ios::app | std::ios::binary);
        file << "[14:30:00:0][Info] Directory deleted: /opt/TessaraWorks/Content\r\n" << std::flush;
    }
}
