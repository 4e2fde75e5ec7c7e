"""Sentences with words that the model lacks, and the texts of a user who has written these words.

Parameters are chosen with the first half and reported for the second one, which has other words and
other sentences. No sentence is in the texts.
"""

# How a voice has to read words that it does not know.
SAID = {
    "anjali": "un jolly", "grafana": "gra fahna", "postgres": "post gress", "terraform": "terra form",
    "webhook": "web hook", "priya": "preea", "okonkwo": "oh conk woe", "siobhan": "shiv on",
    "kotlin": "cot lin", "wireguard": "wire guard", "numpy": "num pie", "changelog": "change log",
    "dropdown": "drop down", "tooltip": "tool tip", "middleware": "middle wear",
    "dockerfile": "docker file", "pytest": "pie test", "wojciech": "voy check", "svelte": "svelt",
    "figma": "fig ma", "onboarding": "on boarding", "nguyen": "win", "mastodon": "masta don",
    "ansible": "an sibble", "inkscape": "ink scape", "debian": "debbie un", "markdown": "mark down",
    "signup": "sign up", "checkbox": "check box", "tailwind": "tale wind", "sveinsson": "svine son",
    "karolina": "carol eena", "thumbnail": "thumb nail", "rebase": "ree base", "podcast": "pod cast",
    "quinoa": "keen wah", "ubuntu": "oo boon too", "wikipedia": "wicky pedia", "cmake": "see make",
    "firefox": "fire fox", "bluetooth": "blue tooth", "webinar": "webbin are", "sidebar": "side bar",
    "mbeki": "em becky", "lakshmi": "lock shmee", "zurich": "zoor ick", "elasticsearch": "elastic search",
    "screenshot": "screen shot",
}

HALVES = (
    {
        "voices": ("slt", "rms"),
        "sentences": """
why is the postgres query so slow
build a grafana chart for the last seven days
write a terraform file for two small servers
send the result to the webhook of our team
ask priya for the latest numbers
write a letter to mister okonkwo about the meeting
tell siobhan that i will be late tomorrow
thank anjali for her help with the project
translate this kotlin class into another language
how do i set up wireguard on my phone
use numpy to find the largest value in the list
update the changelog with these three points
the dropdown should close when i click outside
add a tooltip that explains what the button does
the middleware must check the password first
make this dockerfile smaller and faster
write a pytest case for the empty list
invite wojciech to the meeting on monday
turn this page into a svelte component
describe the design in figma in one paragraph
plan the onboarding of a new colleague
send the report to nguyen before friday
write a short mastodon post about our new release
""",
        "texts": """
We use Postgres and Redis. Write a Postgres migration for this table.
Describe this Grafana dashboard for people who are new to it.
Write Terraform modules for the following infrastructure.
Explain what this webhook receives and how to verify it.
Sign as Priya. Copy in Okonkwo and Siobhan.
Reply to Nguyen and Anjali in a polite tone.
Port the following Java code to Kotlin.
Write a WireGuard configuration for the following network.
Rewrite the loops with NumPy. Explain why NumPy is faster.
Write a changelog entry in the imperative mood.
Give accessible markup for a dropdown with a tooltip.
Explain the order of the middleware below.
Write a Mastodon thread with at most five posts.
Explain this Dockerfile line by line.
Write pytest tests for the function below. Use pytest fixtures.
Translate the mail from Wojciech into English.
Write a Svelte store for the following data.
Write a description of these Figma frames.
Draw up an onboarding plan for the first two weeks.
""",
    },
    {
        "voices": ("rms", "awb"),
        "sentences": """
write an ansible playbook that installs the updates
convert the drawing to a path in inkscape
which debian package contains this command
format the answer as markdown with short headings
make the signup form shorter and friendlier
the checkbox must be off when the page opens
style this card with tailwind and keep it simple
write to sveinsson about the invoice from last month
karolina wants to change the date of the workshop
create a thumbnail for every picture in the folder
explain how to rebase my branch without losing work
write an introduction for the next podcast
suggest a salad with quinoa and roasted vegetables
how do i install ubuntu next to another system
summarize the wikipedia article in five sentences
why does cmake not find the library
which firefox extension blocks these messages
my bluetooth headphones lose the connection every day
prepare ten questions for the webinar on thursday
move the search field into the sidebar
ask lakshmi whether the train to zurich is on time
the elasticsearch index is larger than the database
compare this screenshot with the new design
""",
        "texts": """
You are an Ansible expert. Review the Ansible roles below.
Export every layer with Inkscape as a separate file.
List the Debian packages that depend on this library. Explain Debian policy.
Return Markdown only. Use Markdown tables for comparisons.
Write a welcome message that we send after signup.
Describe the states of a checkbox for a screen reader.
Rewrite these classes with Tailwind. Avoid custom CSS.
Translate the offer from Sveinsson. Copy in Karolina.
Karolina, please find the agenda below.
Crop the thumbnail to a square. Name the thumbnail after the page.
Explain when to rebase and when to merge.
Write show notes for this podcast with chapters.
A recipe with quinoa, lemon and feta for four people.
Steps to upgrade Ubuntu to the next long-term release of Ubuntu.
Check these facts against Wikipedia and give the links.
Write a CMake function that lists the sources. Use modern CMake.
Open the page in Firefox and in another browser.
Troubleshoot a Bluetooth speaker that turns itself off.
Write an invitation to our webinar about accessibility.
Collapse the sidebar on small screens.
Lakshmi books the hotel in Zurich.
Tune this Elasticsearch query for short texts.
Describe the screenshot for people who cannot see it.
""",
    },
)

# Texts of any user, so that the words above are only a part of the vocabulary.
OTHER_TEXTS = """
You are a helpful assistant. Answer in plain English and keep it short.
Proofread the text below. Correct mistakes only and keep my tone of voice.
Write an answer to this customer. Be polite, apologise once and offer a refund.
Give me three headlines for this article with at most eight words each.
Explain the following function to a beginner, step by step.
Act as an interviewer for a senior position. Ask one question at a time.
Summarise the minutes of the meeting. List decisions, owners and dates.
Kind regards, and thank you for your patience.
What could go wrong with this plan? Name the three largest risks first.
Translate the text below into Spanish. Keep names and numbers as they are.
"""
