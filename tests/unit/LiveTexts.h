#pragma once

/** Returns the number of arrays that the program has made with new[] and not yet deleted. The characters
    of each juce::String are such an array, so objects that hold paths or other strings show in the number.
*/
int countLiveTexts();

/** Returns the number of such arrays made so far, deleted ones included. */
int countTextsMade();
