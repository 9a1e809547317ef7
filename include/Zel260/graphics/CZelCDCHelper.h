// Static helpers for device contexts: clipping, a rubber band drawn by inversion, the
// size of paper, and the printable area of a page within its margins.
#pragma once

#include <Zel260/platform/CDC.h>
#include <Zel260/platform/CGeometry.h>
#include <Zel260/platform/CPrintInfo.h>

class CZelCDCHelper {
public:
    // Makes `rect` (device units) the clip of `dc` in place of the present clip, and
    // returns the clip box from before; an empty rectangle when there was no clip box
    // (null region or error) or `dc` is null. A device that can't replace its clip
    // narrows the present one to `rect` instead.
    static CRect SelectClipRect(CDC* dc, CRect rect);
    // Inverts the one-pixel outline of `rect` (normalised first; an empty rectangle
    // draws nothing) through the halftone pattern, as PatBlt with the halftone
    // brush and PATINVERT does: top, right, bottom, left; on each line every other
    // pixel (those where x + y is even) is inverted. Drawing the same band again
    // restores the picture.
    static void DrawRubberBand(CDC* dc, CRect rect);
    // Greys `rect` of a dialog's picture: every other pixel, in a chequer pattern,
    // takes the button face colour.
    static void MakeDlgDisabled(CDC* dc, CRect rect);
    // The paper's width and height in inches by the mode's paper code; a custom
    // size (code 0 or unknown) by its width and length in tenths of millimetres.
    // FALSE, with both 0, for a null mode or a size that can't be told.
    static BOOL GetPaperSizeInInches(const DEVMODE* mode, double& width, double& height);
    // The same for the printer's mode of a print job; FALSE, with both 0, for a
    // null job.
    static BOOL GetPaperSizeInInches(const CPrintInfo* info, double& width, double& height);
    // The area to print on, in device pixels of `dc` relative to the printable
    // area's corner: the page of paperWidth x paperHeight inches within `margins`
    // (left, top, right, bottom; hundredths of millimetres when `metric`, else
    // thousandths of inches), where the printer's unprintable border counts
    // towards the margin. A null `dc` gives an empty rectangle.
    static CRect CalculatePrintArea(CDC* dc, double paperWidth, double paperHeight, CRect margins, int metric);
};
