// The leader functions of the general table: the callbacks that create and edit TVLeader
// entities from LISP. Each runs the handler guard around its inner handler.
#pragma once

namespace kelvo {

// (tv_tv-leader-insert (start middle end) layer block scale) -> the new leader's name; nil
// for an unknown layer or a block that cannot be found.
int tvLeaderInsert();
// (tv_tv-leader-setPoints leader (start middle end)) -> T
int tvLeaderSetPoints();
// (tv_tv-leader-setBlock leader block) -> T (the leader is unchanged when the block
// cannot be found)
int tvLeaderSetBlock();
// (tv_tv-leader-setOffset leader scale) -> T
int tvLeaderSetOffset();
// (tv_tv-leader-explode leader) -> (line line insert): new entities beside the leader
int tvLeaderExplode();

}  // namespace kelvo
