#ifndef KOV_TRACK_COMMANDS_H
#define KOV_TRACK_COMMANDS_H

class OdEdCommandContext;

// The commands that build an animation's tracks from a script, without the
// editor. They act on the drawing's editing animation (animationselect
// picks it); tracks are named by name or number, sub-tracks by number,
// parameter name or type, times are milliseconds on the animation's clock.
namespace kovTrackCommands {

// animationselect NAME: makes the named animation the editing one.
void selectAnimation(OdEdCommandContext* pCmdCtx);
// animationtrack Camera|Entity|Environment|SpawnedObject|Object [SUBJECT] [NAME]:
// an entity track takes the entity's handle (or Last), a spawned object the
// library block's name, an object the placed block reference's handle.
void addTrack(OdEdCommandContext* pCmdCtx);
// animationsubtrack TRACK TYPE [PARAMETER [Point|Number|OnOff|Text]]: a
// sub-track without keyframes.
void addSubTrack(OdEdCommandContext* pCmdCtx);
// animationkey TRACK SUBTRACK MS VALUE: a keyframe (kovKeyframeText reads the value).
void addKeyframe(OdEdCommandContext* pCmdCtx);
// animationspeed TRACK SPEED: the track's paths re-timed by their length at
// SPEED drawing units per second.
void retime(OdEdCommandContext* pCmdCtx);

} // namespace kovTrackCommands

#endif
