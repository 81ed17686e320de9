// Waits for a dialog with this title and presses a button of it: AnswerDialog TITLE BUTTON
// The button is a number: 1 for OK or the first of a page, 6 for Yes, 7 for No.

#include <windows.h>

#include <cstdlib>

int main (int, char* argv[])
{
    HWND dialog = nullptr;

    while ((dialog = FindWindowA ("#32770", argv[1])) == nullptr || ! IsWindowVisible (dialog))
        Sleep (20);

    return PostMessageA (dialog, WM_COMMAND, static_cast<WPARAM> (std::atoi (argv[2])), 0) ? 0 : 1;
}
