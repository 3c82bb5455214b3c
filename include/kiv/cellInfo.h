#pragma once

#include <string>
#include <utility>

#include "kiv/typedColorN.h"

namespace Kiv_v4 {

/// The look of an item's cell in a tree view.
struct CellInfo
{
    /// Takes the fields in order.
    CellInfo(std::string cellText, double pointSize, bool isBold, bool isItalic, bool isStruckOut,
             const TypedColorN<float, 3>& foreground, const TypedColorN<float, 3>& background)
        : text(std::move(cellText)), fontPointSize(pointSize), fontBold(isBold),
          fontItalic(isItalic), fontStrikeOut(isStruckOut), textForeground(foreground),
          textBackground(background)
    {}

    std::string text;                     ///< The text in the cell.
    double fontPointSize;                 ///< In points; 0 for the view's own size.
    bool fontBold;                        ///< In bold type.
    bool fontItalic;                      ///< In italics.
    bool fontStrikeOut;                   ///< Struck out.
    TypedColorN<float, 3> textForeground; ///< From 0 to 1, as shown on the screen.
    TypedColorN<float, 3> textBackground; ///< From 0 to 1, as shown on the screen.
};

} // namespace Kiv_v4
