#ifndef KOV_CUT_COMMANDS_H
#define KOV_CUT_COMMANDS_H

class OdEdCommandContext;

// The commands that add and change the editing animation's camera cuts from
// a script. Every value goes through the checks the production widgets
// make, with the same sentences.
namespace kovCutCommands {

// animationcut TRACK START END [NAME]: a cut of a camera track from START to
// END ms, with the default output settings.
void addCut(OdEdCommandContext* pCmdCtx);
// animationcutset CUT SETTING VALUE, SETTING one of Name, Camera (a track),
// Start, End (ms), FrameRate, Size (WIDTHxHEIGHT), Format (Jpg, Png, Hdr,
// Avi, Mp4, Mov, Flv, Mkv, JpegSequence, PngSequence), Encoding (H264,
// H265, Mjpeg, Uncompressed, Flv, Quicktime, XVid), Quality (Low, Medium,
// High, Extreme), Samples, PathTracing (On/Off) and View (a named view).
void setCut(OdEdCommandContext* pCmdCtx);

} // namespace kovCutCommands

#endif
