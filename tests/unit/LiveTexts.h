#pragma once

/** Returns the number of arrays that the program has made with new and not deleted so far. The
    characters of each juce::String are one, so what holds paths or other texts shows in this number.
*/
int countLiveTexts();

/** Returns the number of such arrays that were ever made. */
int countTextsMade();
