#pragma once

#include <array>
#include <memory>
#include <string>

class zApp;
class zIdleList;
class zTimer;

/// The application's one entry: builds the main window, brings up the link, runs the main loop and
/// takes everything down.
void appMain(zApp* app);

extern char* g_AppTitle;         ///< "Korvane UI"; 21 bytes, lives while appMain runs
extern std::string g_TargetDir;  ///< value of -t; parsed and used by nothing
extern int g_PostOption;         ///< 1 when -post was given; used by nothing
extern zIdleList* g_IdleList;    ///< the application's idle handlers

/// Identification texts that messages bring and nothing reads.
extern std::string g_SymbolName;
extern std::string g_Identification2;
extern std::string g_Identification3;
