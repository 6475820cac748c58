// SPDX-License-Identifier: MIT
// The names of the offers of notices, which the program that shows them carries out.
#pragma once

#include "src/text/text.h"

namespace companion {

inline const Text OfferInstall = u"install";     ///< choose a driver package and install it
inline const Text OfferSample = u"sample";       ///< install the sample driver
inline const Text OfferPorts = u"ports";         ///< choose the port
inline const Text OfferUsePort = u"useport";     ///< use the port that the notice is about
inline const Text OfferNamedPort = u"namedport"; ///< use the port whose address was given and that is not chosen
inline const Text OfferHandOver = u"handover";   ///< hand over what is new
inline const Text OfferGoOn = u"goon";           ///< let a link go on that a person has paused
inline const Text OfferNotNow = u"notnow";       ///< withdraw the notice
inline const Text OfferLater = u"later";         ///< say it again at the next start
inline const Text OfferNoHints = u"nohints";     ///< show no hints any more

} // namespace companion
