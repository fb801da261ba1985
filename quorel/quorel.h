// quorel: every public header of the library.
#ifndef QUOREL_QUOREL_H
#define QUOREL_QUOREL_H

#include <quorel/config/ErrorMessages.h>
#include <quorel/config/Errors.h>
#include <quorel/config/Localizer.h>
#include <quorel/config/Messages.h>
#include <quorel/config/ReplacementValue.h>
#include <quorel/debug/Debug.h>
#include <quorel/debug/Dialogs.h>
#include <quorel/threads/ReaderWriterLock.h>
#include <quorel/time/FrameRate.h>
#include <quorel/time/TickTime.h>
#include <quorel/utility/AllocatorInterface.h>
#include <quorel/utility/CaseMapping.h>
#include <quorel/utility/CodeUnitTraits.h>
#include <quorel/utility/Export.h>
#include <quorel/utility/RefCountedObject.h>
#include <quorel/utility/SmallBlockAllocator.h>
#include <quorel/utility/TextUtils.h>
#include <quorel/utility/UnicodeConversion.h>
#include <quorel/utility/UnicodeString.h>

#endif
