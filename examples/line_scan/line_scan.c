/* A line-scan camera: lines arrive in blocks of any number, in packed 12 bits, and go on as 8-bit grey in frames of a
 * thousand lines. Grey and RGB lines stand alone: each block is converted as it comes, straight to its place, and the
 * frame is done when its last line is there. (Mosaics look at the next line: keep two lines of a block for the next.) */
#include <orvella/orv.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

enum { WIDTH = 4096, FRAME = 1000, BLOCK = 64, FRAMES = 20, PACKED = WIDTH * 12 / 8 };

/* Stands for the camera: 1 to 64 lines of Mono12p, a bright dot walking over them. */
static unsigned next_block(unsigned char* block, unsigned long line) {
    const unsigned lines = 1 + (unsigned)(line * 2654435761u >> 7) % BLOCK;
    memset(block, 0x20, (size_t)lines * PACKED);
    for (unsigned i = 0; i < lines; ++i) block[(size_t)i * PACKED + (line + i) % PACKED] = 0xFF;
    return lines;
}

static OrvErrorType convert(const unsigned char* lines, unsigned count, unsigned char* grey) {
    OrvImage source = {.Size = sizeof source, .Data = (void*)lines};
    OrvImage picture = {.Size = sizeof picture, .Data = grey};
    OrvSetImageInfoFromPixelFormat(OrvPixelFormatMono12p, WIDTH, count, &source);
    OrvSetImageInfoOutput(OrvOutputMono8, WIDTH, count, &picture);
    return OrvImageTransform(&source, &picture, NULL, 0);
}

int main(void) {
    unsigned char* const block = malloc((size_t)BLOCK * PACKED);
    unsigned char* const frame = malloc((size_t)FRAME * WIDTH);
    unsigned filled = 0, frames = 0;
    unsigned long line = 0;
    const clock_t begin = clock();
    while (frames < FRAMES) {
        const unsigned count = next_block(block, line);
        for (unsigned done = 0; done < count;) {
            /* A block may end one frame and begin the next. */
            const unsigned now = count - done < FRAME - filled ? count - done : FRAME - filled;
            const OrvErrorType result = convert(block + (size_t)done * PACKED, now, frame + (size_t)filled * WIDTH);
            if (result != OrvErrorSuccess) return fprintf(stderr, "error %d\n", (int)result), 1;
            done += now;
            filled = (filled + now) % FRAME;
            frames += filled == 0; /* a whole frame: hand it on here */
        }
        line += count;
    }
    const double seconds = (double)(clock() - begin) / CLOCKS_PER_SEC;
    printf("%u frames of %dx%d, %.0f lines/s, %.1f frames/s\n", frames, WIDTH, FRAME, (double)line / seconds,
           frames / seconds);
    free(block);
    free(frame);
    return 0;
}
