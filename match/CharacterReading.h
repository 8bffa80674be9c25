#pragma once

/// What ReadCharacters of CKestImage takes and gives.

/// What counts as a character, and when a reading is good enough.
struct CReadingSettings
{
    int threshold = 128;
    int object = 0;    ///< 0: characters are not brighter than the threshold; 255: brighter
    int min_width = 2; ///< extents of a character in pixels, both ends included
    int max_width = 100;
    int min_height = 5;
    int max_height = 100;
    int shift = 1;            ///< every source is tried so many pixels each way; 0 to 16
    double min_yield = 0.7;   ///< a character that agrees less is rejected
    double min_margin = 0.05; ///< one that agrees hardly better than another character is rejected, too
};

/// A character that was read; the box's sides all belong to it.
struct CCharacterReading
{
    int key;           ///< the character whose source agrees best; -1 when no source is of its size
    int second;        ///< the other character that agrees best; -1 without one
    bool rejected;     ///< too little yield or margin
    double best_yield; ///< 0 to 1: the correlation of the character with the source
    double margin; ///< how much more the source explains than the second's: the squared yields' difference
    int left;
    int top;
    int right;
    int bottom;
    int line; ///< lines count from 0
};
