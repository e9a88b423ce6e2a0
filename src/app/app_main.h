#pragma once

class zApp;

/// The application's one entry: builds the main window, brings up the link, runs the main loop and
/// takes everything down.
void appMain(zApp* app);
