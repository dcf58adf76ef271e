/* A C program over the toolbox alone. usage: toolbox_caller MOVIE */
#include <Toolbox/Toolbox.h>
#include <stdio.h>

int main(int argc, char** argv) {
  Movie movie;
  if (argc != 2) return 2;
  if (ToolboxOpenMovie(argv[1], &movie) != noErr) {
    puts(ToolboxErrorDetail());
    return 1;
  }
  printf("%d tracks, %d of %d\n", (int)GetMovieTrackCount(movie), (int)GetMovieDuration(movie),
         (int)GetMovieTimeScale(movie));
  DisposeMovie(movie);
  return 0;
}
